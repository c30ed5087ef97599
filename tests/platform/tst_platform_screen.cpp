// The display while repaint is off and when it is on again, looked at by its pixels.
#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "pbe/application.h"
#include "pbe/screen.h"

namespace {

class ColouredWindow : public QWidget
{
public:
    ColouredWindow(const QRect &place, const QColor &colour)
        : m_colour(colour)
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setGeometry(place);
        show();
    }

    void Recolour(const QColor &colour)
    {
        m_colour = colour;
        update();
    }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++paints;
        QPainter(this).fillRect(rect(), m_colour);
    }

private:
    QColor m_colour;
};

// Of the page, of the box over it, and of a window that comes late.
QList<QColor> Colours()
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    return {screen.pixelColor(20, 250), screen.pixelColor(150, 150), screen.pixelColor(230, 30)};
}

// Long enough for a painting that should not be.
constexpr int kTurns = 150;

} // namespace

class TestScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RepaintOffKeepsThePicture()
    {
        ColouredWindow page({0, 0, 400, 300}, Qt::red);
        QTRY_COMPARE(Colours()[0], Qt::red);
        ColouredWindow box({100, 100, 100, 100}, Qt::cyan);
        const QList<QColor> before{Qt::red, Qt::cyan, Qt::red};
        QTRY_COMPARE(Colours(), before);
        QWidget disabled;
        disabled.setUpdatesEnabled(false);
        const int paints = page.paints;
        QPbeScreen *screen = QPbeScreen::Current();
        screen->TurnOffScreenRepaint();
        screen->TurnOffScreenRepaint();
        page.Recolour(Qt::green);
        page.repaint();
        box.hide();
        ColouredWindow late({200, 0, 60, 60}, Qt::blue);
        late.repaint();
        QTest::qWait(kTurns);
        QCOMPARE(page.paints + late.paints, paints);
        QCOMPARE(Colours(), before);

        screen->TurnOnScreenRepaint();
        QCOMPARE(Colours(), (QList<QColor>{Qt::green, Qt::green, Qt::blue}));
        QVERIFY(!disabled.updatesEnabled());
        page.Recolour(Qt::magenta);
        QTRY_COMPARE(Colours()[0], Qt::magenta);
    }

    void BusyShowsAtOnceAndDoesNothingElse()
    {
        ColouredWindow page({0, 0, 400, 300}, Qt::red);
        QTRY_COMPARE(Colours()[0], Qt::red);
        bool other = false;
        QTimer::singleShot(0, &page, [&other] { other = true; });
        page.Recolour(Qt::green);
        PbeSetBusy(true);
        QCOMPARE(Colours()[0], Qt::green);
        QVERIFY(!other);
        PbeSetBusy(false);
    }
};

QTEST_MAIN(TestScreen)
#include "tst_platform_screen.moc"
