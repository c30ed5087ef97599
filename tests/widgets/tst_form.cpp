// What the controller and the style sheet rely on in the form; and the window at the sizes of real screens,
// also when it is mirrored.
#include <QApplication>

#include "form_window.h"
#include "test_main.h"

PBA_TEST_MAIN(QApplication)

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void onlySecretsAreMasked()
    {
        const FormWindow view;
        for (const QLineEdit *edit : view.dialog.findChildren<QLineEdit *>()) {
            const bool secret = edit->objectName().contains(u"password"_qs, Qt::CaseInsensitive) ||
                                view.form.tokensList->isAncestorOf(edit);
            QCOMPARE(edit->echoMode(), secret ? QLineEdit::Password : QLineEdit::Normal);
        }
    }

    void colours()
    {
        FormWindow view;
        const struct
        {
            const char *property;
            QString text, colour;
        } rows[] = {{"none", u"Text"_qs, u"black"_qs},       {"none", u"Accepted"_qs, u"darkgreen"_qs},
                    {"none", u"Rejected"_qs, u"red"_qs},     {"none", u"Rejected."_qs, u"black"_qs},
                    {"title", u"Title"_qs, u"darkgreen"_qs}, {"gray_label", u"Domain:"_qs, u"gray"_qs},
                    {"error_title", u"Error"_qs, u"red"_qs}};
        for (const auto &row : rows) {
            QLabel label(row.text, &view.dialog);
            label.show();
            label.setProperty(row.property, true);
            Restyle(&label);
            QVERIFY2(label.palette().color(QPalette::WindowText) == QColor(row.colour), qPrintable(row.text));
        }
        // Where a label has a colour of its own, that one wins.
        QCOMPARE(view.form.warningLabel->palette().color(QPalette::WindowText), QColor(235, 40, 52));
    }

    void marginsHold()
    {
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            for (const QSize size : {QSize(800, 600), QSize(1024, 768)})
                CheckMargins(size, direction);
        }
    }

private:
    static void CheckMargins(QSize size, Qt::LayoutDirection direction)
    {
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
        QCOMPARE(view.form.stackedWidget->height(), 422);
        QVERIFY(view.PlaceOf(view.form.helpButton).bottom() < size.height());
    }
};

PBA_REGISTER_TEST(TestForm);

#include "tst_form.moc"
