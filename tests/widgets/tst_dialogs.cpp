// The message box and the dialog that locks: place, parts, results.
#include <QLabel>
#include <QScreen>
#include <QTimer>

#include "form_window.h"
#include "test_main.h"
#include "widgets/lock_ui_dialog.h"
#include "widgets/pba_message_box.h"

namespace {

template <typename Part>
Part *PartOf(const QDialog &dialog, const QString &name)
{
    Part *part = dialog.findChild<Part *>(name);
    Q_ASSERT(part);
    return part;
}

QColor TitleColour(const QDialog &dialog)
{
    auto *title = PartOf<QLabel>(dialog, u"title"_qs);
    title->ensurePolished();
    return title->palette().color(QPalette::WindowText);
}

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void onlyWhatWasSetIsShown()
    {
        PbaMessageBox box;
        box.show();
        for (const QString &name :
             {u"button1"_qs, u"button2"_qs, u"button3"_qs, u"icon"_qs, u"versionLabel"_qs})
            QVERIFY2(PartOf<QWidget>(box, name)->isHidden(), qPrintable(name));
        box.SetButton2Text(u"CANCEL"_qs);
        QVERIFY(!PartOf<QWidget>(box, u"button2"_qs)->hasFocus());
        box.SetButton3Text(u"QUIT"_qs);
        QVERIFY(PartOf<QWidget>(box, u"button2"_qs)->isVisible());
        QCOMPARE(box.focusWidget(), PartOf<QWidget>(box, u"button3"_qs));
        box.ShowVersion();
        QCOMPARE(PartOf<QLabel>(box, u"versionLabel"_qs)->text(), u"3.0.1.92"_qs);
        QVERIFY(PartOf<QLabel>(box, u"versionLabel"_qs)->isVisible());
    }

    void resultTellsTheButton_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("result");
        QTest::newRow("first") << u"button1"_qs << int(Qt::Key_Space) << 1;
        QTest::newRow("second") << u"button2"_qs << int(Qt::Key_Return) << 2;
        QTest::newRow("third") << u"button3"_qs << int(Qt::Key_Return) << 3;
        QTest::newRow("third by Space") << u"button3"_qs << int(Qt::Key_Space) << 3;
        QTest::newRow("none") << u"button3"_qs << int(Qt::Key_Escape) << 0;
    }
    void resultTellsTheButton()
    {
        QFETCH(QString, button);
        QFETCH(int, key);
        PbaMessageBox box;
        box.SetButton1Text(u"Forgot your password?"_qs);
        box.SetButton2Text(u"CANCEL"_qs);
        box.SetButton3Text(u"CONTINUE"_qs);
        QTimer::singleShot(0, &box, [&] {
            auto *pressed = PartOf<QWidget>(box, button);
            pressed->setFocus();
            QTest::keyClick(pressed, static_cast<Qt::Key>(key));
        });
        box.exec();
        QTEST(static_cast<int>(box.Result()), "result");
    }

    void severityChoosesIconAndTitleColour()
    {
        PbaMessageBox box;
        box.show();
        const auto *icon = PartOf<QLabel>(box, u"icon"_qs);
        QCOMPARE(TitleColour(box), QColor(u"darkgreen"_qs));
        box.SetSeverityIcon(2);
        QVERIFY(icon->isVisible());
        QCOMPARE(icon->pixmap().size(), QSize(24, 24));
        QCOMPARE(TitleColour(box), QColor(Qt::red));
        box.SetSeverityIcon(7);
        QVERIFY(icon->isVisible());
        QCOMPARE(TitleColour(box), QColor(Qt::red));
        box.SetSeverityIcon(1);
        QCOMPARE(icon->pixmap().size(), QSize(25, 26));
        QCOMPARE(TitleColour(box), QColor(u"darkgreen"_qs));
        box.SetSeverityIcon(2);
        box.SetSeverityIcon(0);
        QVERIFY(icon->isHidden());
        QCOMPARE(TitleColour(box), QColor(u"darkgreen"_qs));
    }

    void framelessInTheMiddleOfTheScreen_data()
    {
        QTest::addColumn<bool>("parented");
        QTest::newRow("alone") << false;
        QTest::newRow("with a parent elsewhere") << true;
    }
    void framelessInTheMiddleOfTheScreen()
    {
        QFETCH(bool, parented);
        FormWindow view;
        view.dialog.move(150, 170);
        QVERIFY(view.Show());
        QWidget *parent = parented ? &view.dialog : nullptr;
        PbaMessageBox box(parent);
        LockUiDialog lock(parent);
        for (QDialog *dialog : std::initializer_list<QDialog *>{&box, &lock}) {
            dialog->show();
            const QPoint away =
                dialog->geometry().center() - QGuiApplication::primaryScreen()->geometry().center();
            QVERIFY2(away.manhattanLength() <= 2, qPrintable(dialog->objectName()));
            QCOMPARE(dialog->size(), QSize(551, 370));
            QCOMPARE(dialog->windowFlags(),
                     Qt::Window | Qt::FramelessWindowHint | Qt::MSWindowsFixedSizeDialogHint);
        }
    }

    void aLongTextFits()
    {
        const QString line = u"Seventy characters are what a line of the longest help text may hold.\n"_qs;
        PbaMessageBox box;
        box.SetTitle(u"Preboot authentication help"_qs);
        box.SetText(line.repeated(12).trimmed());
        box.SetSeverityIcon(1);
        box.SetButton3Text(u"CONTINUE"_qs);
        box.ShowVersion();
        box.show();
        const auto *text = PartOf<QLabel>(box, u"mainText"_qs);
        QVERIFY(text->heightForWidth(text->width()) <= text->height());
    }

    void lockSaysItsTextAndHasNoControl()
    {
        LockUiDialog lock;
        lock.SetTitle(u"Internal Error"_qs);
        // Names that come from elsewhere are never taken for markup.
        lock.SetText(u"<b>res:</b>"_qs);
        QCOMPARE(PartOf<QLabel>(lock, u"title"_qs)->text(), u"Internal Error"_qs);
        QCOMPARE(PartOf<QLabel>(lock, u"mainText"_qs)->textFormat(), Qt::PlainText);
        QVERIFY(lock.findChildren<QAbstractButton *>().isEmpty());
    }
};

PBA_REGISTER_TEST(TestDialogs);

#include "tst_dialogs.moc"
