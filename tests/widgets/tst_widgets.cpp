// Line edits, links and dialogs, the painting ones judged by what they paint.
#include <QScreen>
#include <QSignalSpy>

#include "form_window.h"
#include "test_main.h"
#include "widgets/lock_ui_dialog.h"
#include "widgets/pba_message_box.h"
#include "widgets/secret_field.h"

static QImage Painted(QWidget *widget)
{
    return widget->grab().toImage();
}

static QImage PaintedUnderThePointer(const FormWindow &view, QWidget *widget, QPoint pointer)
{
    QTest::mouseMove(view.dialog.windowHandle(), pointer);
    QCoreApplication::processEvents();
    return Painted(widget);
}

template <typename Widget = QWidget>
static Widget *Part(const QDialog &dialog, const char *name)
{
    return dialog.findChild<Widget *>(QString::fromLatin1(name));
}

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

    void hintShowsWhileTheLineIsEmpty()
    {
        PbaLineEdit edit;
        edit.resize(200, 28);
        // Letters and no boxes, also where the font has no italics for them.
        QList<QImage> images;
        for (const QString &hint : {QString(), u"Login"_qs, u"ب"_qs, u"ت"_qs}) {
            edit.setProperty("pba_text", hint);
            edit.hide();
            edit.show();
            QVERIFY(!images.contains(Painted(&edit)));
            images << Painted(&edit);
            edit.setText(u"a"_qs);
            images << Painted(&edit);
            QCOMPARE(images.last(), images[1]);
            edit.clear();
        }
    }

    // Read out to the administrator, a name must not begin with its end.
    void nameKeepsItsOrderInAMirroredWindow()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        PbaElidedLabel first(u"01-PC"_qs);
        PbaElidedLabel second(u"PC-01"_qs);
        const bool alike = Painted(&first) == Painted(&second);
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
        QVERIFY(!alike);
    }

    void linkIsUnderlinedUnderThePointerUntilPressed()
    {
        FormWindow view;
        PbaLinkButton *link = view.form.startPasswordRecoveryButton;
        const QPoint on = view.PlaceOf(link).center();
        const QPoint off(5, 300);
        link->setFocusPolicy(Qt::NoFocus);
        const QImage plain = PaintedUnderThePointer(view, link, off);
        const QImage underlined = PaintedUnderThePointer(view, link, on);
        QVERIFY(underlined != plain);
        QTest::mouseClick(view.dialog.windowHandle(), Qt::LeftButton, {}, on);
        QCOMPARE(Painted(link), plain);
        QCOMPARE(PaintedUnderThePointer(view, link, off), plain);
        QCOMPARE(PaintedUnderThePointer(view, link, on), underlined);
        QCOMPARE(link->palette().color(QPalette::ButtonText), QColor(u"darkgreen"_qs));

        link->setEnabled(false);
        const QImage disabled = PaintedUnderThePointer(view, link, off);
        QCOMPARE(PaintedUnderThePointer(view, link, on), disabled);
        QCOMPARE(link->palette().color(QPalette::ButtonText), QColor(u"gray"_qs));
    }

    void severityChoosesIconAndTitleColour()
    {
        PbaMessageBox box;
        box.show();
        // Each after the one before; 7 changes nothing.
        const std::tuple<int, QSize, QString> rows[] = {{2, {24, 24}, u"red"_qs},
                                                        {7, {24, 24}, u"red"_qs},
                                                        {1, {25, 26}, u"darkgreen"_qs},
                                                        {2, {24, 24}, u"red"_qs},
                                                        {0, {}, u"darkgreen"_qs}};
        for (const auto &[severity, size, colour] : rows) {
            box.SetSeverityIcon(severity);
            const auto *icon = Part<QLabel>(box, "icon");
            QCOMPARE(icon->isHidden() ? QSize() : icon->pixmap().size(), size);
            QCOMPARE(Part(box, "title")->palette().color(QPalette::WindowText), QColor(colour));
        }
    }

    void dialogsStandFramelessInTheMiddleOfTheScreen()
    {
        FormWindow view;
        view.dialog.move(150, 170);
        PbaMessageBox alone;
        PbaMessageBox box(&view.dialog);
        LockUiDialog lock(&view.dialog);
        for (QDialog *dialog : std::initializer_list<QDialog *>{&alone, &box, &lock}) {
            dialog->show();
            const QPoint middle = QGuiApplication::primaryScreen()->geometry().center();
            QVERIFY((dialog->geometry().center() - middle).manhattanLength() <= 2);
            QCOMPARE(dialog->size(), QSize(551, 370));
            QCOMPARE(dialog->windowFlags(),
                     Qt::Window | Qt::FramelessWindowHint | Qt::MSWindowsFixedSizeDialogHint);
        }
        QVERIFY(lock.findChildren<QAbstractButton *>().isEmpty());
        // Names that come from elsewhere are never taken for markup.
        QCOMPARE(Part<QLabel>(lock, "mainText")->textFormat(), Qt::PlainText);
    }
};

PBA_REGISTER_TEST(TestWidgets);

#include "tst_widgets.moc"
