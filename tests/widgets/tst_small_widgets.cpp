// The hint of line edits and the underline of links, judged by what is painted.
#include <QSignalSpy>

#include "form_window.h"
#include "test_main.h"

namespace {

QImage Painted(QWidget *widget)
{
    return widget->grab().toImage();
}

void MoveTo(const FormWindow &view, QPoint place)
{
    QTest::mouseMove(view.dialog.windowHandle(), place);
    QCoreApplication::processEvents();
}

} // namespace

class TestSmallWidgets : public QObject
{
    Q_OBJECT

private slots:
    void hintShowsWhileTheLineIsEmpty()
    {
        PbaLineEdit plain;
        PbaLineEdit hinted;
        hinted.setProperty("pba_text", u"Login"_qs);
        plain.resize(200, 28);
        hinted.resize(200, 28);
        plain.show();
        hinted.show();
        const QImage withHint = Painted(&hinted);
        QVERIFY(withHint != Painted(&plain));

        plain.setText(u"a"_qs);
        hinted.setText(u"a"_qs);
        QCOMPARE(Painted(&hinted), Painted(&plain));
        hinted.clear();
        QCOMPARE(Painted(&hinted), withHint);
    }

    void hintIsReadAgainAtEveryShow()
    {
        PbaLineEdit edit;
        edit.setProperty("pba_text", u"Password"_qs);
        edit.resize(200, 28);
        edit.show();
        const QImage before = Painted(&edit);
        edit.setProperty("pba_text", u"Kennwort"_qs);
        QCOMPARE(Painted(&edit), before);
        edit.hide();
        edit.show();
        QVERIFY(Painted(&edit) != before);
        QCOMPARE(edit.accessibleName(), u"Kennwort"_qs);
    }

    void linkIsUnderlinedUnderThePointerUntilPressed()
    {
        FormWindow view;
        QVERIFY(view.Show());
        PbaLinkButton *link = view.form.startPasswordRecoveryButton;
        const QPoint on = view.PlaceOf(link).center();
        const QPoint off(5, 300);
        link->setFocusPolicy(Qt::NoFocus);
        MoveTo(view, off);
        const QImage plain = Painted(link);

        MoveTo(view, on);
        const QImage underlined = Painted(link);
        QVERIFY(underlined != plain);
        QTest::mousePress(view.dialog.windowHandle(), Qt::LeftButton, {}, on);
        QTest::mouseRelease(view.dialog.windowHandle(), Qt::LeftButton, {}, on);
        QCOMPARE(Painted(link), plain);
        MoveTo(view, off);
        MoveTo(view, on);
        QCOMPARE(Painted(link), underlined);
        MoveTo(view, off);
        QCOMPARE(Painted(link), plain);
    }

    void disabledLinkIsGrayAndNeverUnderlined()
    {
        FormWindow view;
        QVERIFY(view.Show());
        PbaLinkButton *link = view.form.changePasswordButton;
        QVERIFY(!link->isEnabled());
        MoveTo(view, QPoint(5, 300));
        const QImage plain = Painted(link);
        MoveTo(view, view.PlaceOf(link).center());
        QCOMPARE(Painted(link), plain);
        QCOMPARE(link->palette().color(QPalette::ButtonText), QColor(u"gray"_qs));
        link->setEnabled(true);
        QCOMPARE(link->palette().color(QPalette::ButtonText), QColor(u"darkgreen"_qs));
    }

    void returnPressesTheLinkAndNotTheDefaultButton()
    {
        FormWindow view;
        view.form.loginButton->setDefault(true);
        QVERIFY(view.Show());
        QSignalSpy login(view.form.loginButton, &QPushButton::clicked);
        QSignalSpy link(view.form.startPasswordRecoveryButton, &QPushButton::clicked);
        view.form.startPasswordRecoveryButton->setFocus();
        QTest::keyClick(view.dialog.focusWidget(), Qt::Key_Return);
        QCOMPARE(link.count(), 1);
        QCOMPARE(login.count(), 0);
        view.form.loginPassword->setFocus();
        QTest::keyClick(view.dialog.focusWidget(), Qt::Key_Enter);
        QCOMPARE(link.count(), 1);
        QCOMPARE(login.count(), 1);
    }

    void longNameIsBrokenThenCut()
    {
        PbaElidedLabel label(u"DESKTOP-4F7K2Q1"_qs);
        label.resize(label.sizeHint());
        const QImage whole = Painted(&label);
        QCOMPARE(label.toolTip(), QString());
        label.resize(label.sizeHint().width() - 10, 3 * label.sizeHint().height());
        QVERIFY(Painted(&label) != whole);
        QCOMPARE(label.toolTip(), QString());
        label.resize(label.width(), label.sizeHint().height());
        label.grab();
        QCOMPARE(label.toolTip(), label.text());
    }
};

PBA_REGISTER_TEST(TestSmallWidgets);

#include "tst_small_widgets.moc"
