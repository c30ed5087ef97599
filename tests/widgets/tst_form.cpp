// What the controller and the style sheet rely on in the form: pages, images, colours, order; and the window
// at the sizes of real screens, also when a translation is longer than the original or runs from right to
// left.
#include <QApplication>
#include <QTranslator>

#include "form_window.h"
#include "test_main.h"

PBA_TEST_MAIN(QApplication)

// Every text two fifths longer than the original.
class LongerTexts : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        const QString original = QString::fromUtf8(text);
        return original + u" und so weiter"_qs.repeated(5).left(original.size() * 2 / 5);
    }
};

// Names of any length may be cut.
static bool IsClipped(const QWidget *widget)
{
    if (qobject_cast<const PbaElidedLabel *>(widget) || qobject_cast<const PbaComboBox *>(widget))
        return false;
    const bool wraps = widget->hasHeightForWidth();
    const int width = wraps ? widget->minimumSizeHint().width() : widget->sizeHint().width();
    const int height = wraps ? widget->heightForWidth(widget->width()) : widget->sizeHint().height();
    return widget->width() < width || widget->height() < height ||
           !widget->parentWidget()->contentsRect().contains(widget->geometry());
}

class TestForm : public QObject
{
    Q_OBJECT

private slots:
    void pagesStandInTheOrderOfTheirIndices()
    {
        const FormWindow view;
        QStringList names;
        for (int i = 0; i < view.form.stackedWidget->count(); ++i)
            names << view.form.stackedWidget->widget(i)->objectName().mid(4);
        QCOMPARE(names.join(u' '),
                 u"LoginByPassword ChangePassword CollectEntropy Challenge Response TestBoot NoTokens "
                 "LoginByToken Starting StartingWindows NoUsers KeyboardTest");
        QCOMPARE(view.form.stackedWidget->currentIndex(), 0);
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

    void imagesHaveTheirSizes()
    {
        const std::pair<QString, QSize> images[] = {
            {u"top_tile"_qs, {20, 17}},        {u"bottom_tile"_qs, {23, 14}},
            {u"name"_qs, {233, 92}},           {u"logo"_qs, {162, 75}},
            {u"button_normal"_qs, {112, 38}},  {u"button_hover"_qs, {112, 38}},
            {u"button_pressed"_qs, {112, 38}}, {u"combo_box_arrow"_qs, {10, 10}},
            {u"icon_error"_qs, {24, 24}},      {u"icon_warning"_qs, {25, 26}}};
        for (const auto &[name, size] : images)
            QVERIFY2(QImage(u":/pba2_res/%1.png"_qs.arg(name)).size() == size, qPrintable(name));
        QVERIFY(!QImage(u":/pba2/quillmark.png"_qs).isNull());
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

    // On a page without other buttons the dialog would else make one its default, and Return in a field would
    // press it too.
    void linksAndSelectorsAreNeverTheDefault()
    {
        const FormWindow view;
        QVERIFY(view.form.helpButton->isFlat() && view.form.languageSelector->isFlat());
        for (const QPushButton *button : view.dialog.findChildren<QPushButton *>())
            QVERIFY2(!button->isFlat() || !button->autoDefault(), qPrintable(button->objectName()));
    }

    void marginsHoldAndNoTextIsClipped_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("longer");
        for (const QSize size : {QSize(800, 600), QSize(1024, 768)}) {
            QTest::addRow("%d x %d", size.width(), size.height()) << size << false;
            QTest::addRow("%d x %d, longer texts, mirrored", size.width(), size.height()) << size << true;
        }
    }
    void marginsHoldAndNoTextIsClipped()
    {
        QFETCH(QSize, size);
        QFETCH(bool, longer);
        LongerTexts translator;
        if (longer)
            QCoreApplication::installTranslator(&translator);
        FormWindow view(size);
        view.dialog.setLayoutDirection(longer ? Qt::RightToLeft : Qt::LeftToRight);
        QStringList clipped;
        for (int page = 0; page < view.form.stackedWidget->count(); ++page) {
            view.form.stackedWidget->setCurrentIndex(page);
            QCoreApplication::processEvents();
            for (const QWidget *widget : view.dialog.findChildren<QWidget *>()) {
                const bool hasText =
                    qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
                // The rows of tokens are samples, which are gone before anyone sees them.
                const bool sample = view.form.tokensList->isAncestorOf(widget);
                if (hasText && !sample && widget->isVisible() && widget != view.form.spacerButton &&
                    IsClipped(widget))
                    clipped << widget->objectName();
            }
        }
        QCOMPARE(clipped.join(u' '), QString());

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
