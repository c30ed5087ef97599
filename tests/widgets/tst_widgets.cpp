// Secret fields, texts that come from elsewhere, and the window at the sizes of real screens, also when it is
// mirrored.
#include <QApplication>
#include <QSignalSpy>

#include "tests/widgets/form_window.h"
#include "tests/support/test_main.h"
#include "module/widgets/lock_ui_dialog.h"
#include "module/widgets/pba_message_box.h"
#include "module/widgets/secret_field.h"

PBA_TEST_MAIN(QApplication)

class TestWidgets : public QObject
{
    Q_OBJECT

private slots:
    void anEmptiedSecretFieldKeepsNothingButItsRules()
    {
        QLineEdit field;
        field.setMaxLength(7);
        for (const QString &mask : {QString(), u">HHHH;_"_qs}) {
            field.setInputMask(mask);
            QTest::keyClicks(&field, u"beef"_qs);
            QSignalSpy told(&field, &QLineEdit::textChanged);
            EmptySecretField(&field);
            QVERIFY(field.text().isEmpty() && !field.isUndoAvailable() && told.count() == 1);
            field.undo();
            QTest::keyClicks(&field, u"12345678"_qs);
            QCOMPARE(field.text(), mask.isEmpty() ? u"1234567"_qs : u"1234"_qs);
        }
    }

    void onlySecretsAreMasked()
    {
        const FormWindow view;
        for (const QLineEdit *edit : view.dialog.findChildren<QLineEdit *>()) {
            const bool secret = edit->objectName().contains(u"password"_qs, Qt::CaseInsensitive) ||
                                view.form.tokensList->isAncestorOf(edit);
            QCOMPARE(edit->echoMode(), secret ? QLineEdit::Password : QLineEdit::Normal);
        }
    }

    void namesAreNeverTakenForMarkup()
    {
        PbaMessageBox box;
        LockUiDialog lock;
        for (const QDialog *dialog : std::initializer_list<QDialog *>{&box, &lock}) {
            for (const QString &name : {u"title"_qs, u"mainText"_qs})
                QCOMPARE(dialog->findChild<QLabel *>(name)->textFormat(), Qt::PlainText);
        }
    }

    // Read out to the administrator, a name must not begin with its end.
    void nameKeepsItsOrderInAMirroredWindow()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        PbaElidedLabel first(u"01-PC"_qs);
        PbaElidedLabel second(u"PC-01"_qs);
        const bool alike = first.grab().toImage() == second.grab().toImage();
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QVERIFY(!alike);
    }

    void longNamesKeepTheMargins()
    {
        for (const auto &[size, direction] :
             {std::pair(QSize(800, 600), Qt::RightToLeft), std::pair(QSize(1024, 768), Qt::LeftToRight)}) {
            FormWindow view(size);
            view.dialog.setLayoutDirection(direction);
            const QString longName = u"A-COMPUTER-WITH-A-LONG-NAME.in-a-domain.of-its-own.example"_qs;
            view.form.languageSelector->AddItem(longName);
            view.form.layoutSelector->AddItem(longName);
            view.form.labelHostNameValue->setText(longName);
            view.form.domainLabel->setText(longName.repeated(3));
            view.form.stackedWidget->setCurrentIndex(0);
            QCoreApplication::processEvents();
            QCOMPARE(view.dialog.size(), size);
            for (const QWidget *part : view.form.frame->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
                const QRect place = view.PlaceOf(part);
                QVERIFY2(part->isHidden() || (place.left() >= 233 && place.right() < size.width() - 162),
                         qPrintable(part->objectName()));
            }
            QVERIFY(view.PlaceOf(view.form.helpButton).bottom() < size.height());
        }
    }
};

PBA_REGISTER_TEST(TestWidgets);

#include "tst_widgets.moc"
