// The window at the sizes of real screens: the frame's margins hold and no text is clipped, also when a
// translation is longer than the original or runs from right to left.
#include <QTranslator>

#include "form_window.h"
#include "test_main.h"

namespace {

// While it lives, and if it is wanted, every text is two fifths longer than the original.
class LongerTexts : public QTranslator
{
public:
    explicit LongerTexts(bool wanted)
    {
        if (wanted)
            QCoreApplication::installTranslator(this);
    }
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *text, const char *, int) const override
    {
        const QString original = QString::fromUtf8(text);
        return original.isEmpty() ? original
                                  : original + u" und so weiter"_qs.repeated(5).left(original.size() * 2 / 5);
    }
};

// Why a widget cannot show all of its text, or nothing. Names of any length may be cut.
QString ClippedBy(const QWidget *widget)
{
    if (qobject_cast<const PbaElidedLabel *>(widget) || qobject_cast<const PbaComboBox *>(widget))
        return {};
    const bool wraps = widget->hasHeightForWidth();
    const int width = wraps ? widget->minimumSizeHint().width() : widget->sizeHint().width();
    const int height = wraps ? widget->heightForWidth(widget->width()) : widget->sizeHint().height();
    if (widget->width() >= width && widget->height() >= height &&
        widget->parentWidget()->contentsRect().contains(widget->geometry()))
        return {};
    return widget->objectName();
}

} // namespace

class TestFormLayout : public QObject
{
    Q_OBJECT

private slots:
    void marginsHold_data() { AddScreens(); }
    void marginsHold()
    {
        QFETCH(QSize, size);
        QFETCH(bool, longer);
        QFETCH(Qt::LayoutDirection, direction);
        const LongerTexts translator(longer);
        FormWindow view(size);
        view.dialog.setLayoutDirection(direction);
        view.form.languageSelector->AddItem(u"Brazilian Portuguese"_qs);
        view.form.labelHostNameValue->setText(
            u"A-COMPUTER-WITH-A-LONG-NAME.in-a-domain.of-its-own.example"_qs);
        view.form.layoutSelector->AddItem(u"United States - International, with dead keys"_qs);
        view.form.domainLabel->setText(u"Domain: "_qs + QString(200, u'D'));
        QVERIFY(view.Show());
        QCOMPARE(view.dialog.size(), size);
        for (const QWidget *part : view.form.frame->findChildren<QWidget *>(Qt::FindDirectChildrenOnly)) {
            if (part->isHidden())
                continue;
            const QRect place = view.PlaceOf(part);
            QVERIFY2(place.left() >= 233 && place.right() < size.width() - 162,
                     qPrintable(part->objectName()));
        }
        QCOMPARE(view.form.stackedWidget->height(), 422);
        QVERIFY(view.PlaceOf(view.form.helpButton).bottom() < size.height());
    }

    void noTextIsClipped_data() { AddScreens(); }
    void noTextIsClipped()
    {
        QFETCH(QSize, size);
        QFETCH(bool, longer);
        QFETCH(Qt::LayoutDirection, direction);
        const LongerTexts translator(longer);
        FormWindow view(size);
        view.dialog.setLayoutDirection(direction);
        QVERIFY(view.Show());
        QStringList clipped;
        for (int page = 0; page < view.form.stackedWidget->count(); ++page) {
            view.form.stackedWidget->setCurrentIndex(page);
            QCoreApplication::processEvents();
            CollectClipped(view, clipped);
        }
        QCOMPARE(clipped, QStringList());
    }

private:
    static void AddScreens()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("longer");
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("800x600") << QSize(800, 600) << false << Qt::LeftToRight;
        QTest::newRow("800x600, longer texts") << QSize(800, 600) << true << Qt::LeftToRight;
        QTest::newRow("1024x768") << QSize(1024, 768) << false << Qt::LeftToRight;
        QTest::newRow("1024x768, longer texts, mirrored") << QSize(1024, 768) << true << Qt::RightToLeft;
        QTest::newRow("1920x1080") << QSize(1920, 1080) << false << Qt::LeftToRight;
    }

    static void CollectClipped(const FormWindow &view, QStringList &clipped)
    {
        for (const QWidget *widget : view.dialog.findChildren<QWidget *>()) {
            const bool hasText =
                qobject_cast<const QLabel *>(widget) || qobject_cast<const QAbstractButton *>(widget);
            if (hasText && widget->isVisible() && widget != view.form.spacerButton)
                clipped << ClippedBy(widget);
        }
        clipped.removeAll(QString());
    }
};

PBA_REGISTER_TEST(TestFormLayout);

#include "tst_form_layout.moc"
