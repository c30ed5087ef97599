// The display while repaint is off and when it is on again, looked at by its pixels.
#include <memory>

#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include "pbe/application.h"
#include "pbe/screen.h"

namespace {

class ColouredWindow : public QWidget
{
public:
    explicit ColouredWindow(const QRect &place, const QColor &colour)
        : m_colour(colour)
    {
        setWindowFlag(Qt::FramelessWindowHint);
        setGeometry(place);
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

QColor ColourAt(const QPoint &point)
{
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage().pixelColor(point);
}

const QRect kPage(0, 0, 400, 300);
const QRect kBox(100, 100, 100, 100);
const QPoint kInPage(20, 250);
const QPoint kInBox(150, 150);
// Long enough for a painting that should not be.
constexpr int kTurns = 150;

} // namespace

class TestScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void OffKeepsThePicture();
    void OnPaintsEveryWindowAtOnce();
    void WindowsOfTheApplicationStayDisabled();
    void BusyShowsAtOnce();

private:
    std::unique_ptr<ColouredWindow> m_page;
    std::unique_ptr<ColouredWindow> m_box;
};

void TestScreen::init()
{
    m_page = std::make_unique<ColouredWindow>(kPage, Qt::red);
    m_box = std::make_unique<ColouredWindow>(kBox, Qt::cyan);
    m_page->show();
    QTRY_COMPARE(ColourAt(kInPage), Qt::red);
    m_box->show();
    QTRY_COMPARE(ColourAt(kInBox), Qt::cyan);
}

void TestScreen::cleanup()
{
    QPbeScreen::Current()->TurnOnScreenRepaint();
    m_box.reset();
    m_page.reset();
}

void TestScreen::OffKeepsThePicture()
{
    QPbeScreen::Current()->TurnOffScreenRepaint();
    const int paints = m_page->paints;
    m_page->Recolour(Qt::green);
    m_page->repaint();
    m_box->hide();
    ColouredWindow late({200, 0, 60, 60}, Qt::blue);
    late.show();
    late.repaint();
    QTest::qWait(kTurns);
    QCOMPARE(m_page->paints, paints);
    QCOMPARE(late.paints, 0);
    QCOMPARE(ColourAt(kInPage), Qt::red);
    QCOMPARE(ColourAt(kInBox), Qt::cyan);
    QCOMPARE(ColourAt({230, 30}), Qt::red);
}

void TestScreen::OnPaintsEveryWindowAtOnce()
{
    QPbeScreen *screen = QPbeScreen::Current();
    screen->TurnOffScreenRepaint();
    screen->TurnOffScreenRepaint();
    ColouredWindow late({200, 0, 60, 60}, Qt::blue);
    late.show();
    m_page->Recolour(Qt::green);
    m_box->Recolour(Qt::yellow);
    QTest::qWait(kTurns);
    screen->TurnOnScreenRepaint();
    QCOMPARE(ColourAt(kInPage), Qt::green);
    QCOMPARE(ColourAt(kInBox), Qt::yellow);
    QCOMPARE(ColourAt({230, 30}), Qt::blue);
    // And painting goes on as ever.
    m_page->Recolour(Qt::magenta);
    QTRY_COMPARE(ColourAt(kInPage), Qt::magenta);
    // It is on already: nothing is painted a second time.
    const int paints = m_page->paints;
    screen->TurnOnScreenRepaint();
    QTest::qWait(kTurns);
    QCOMPARE(m_page->paints, paints);
}

void TestScreen::WindowsOfTheApplicationStayDisabled()
{
    m_box->setUpdatesEnabled(false);
    QPbeScreen::Current()->TurnOffScreenRepaint();
    QPbeScreen::Current()->TurnOnScreenRepaint();
    QVERIFY(!m_box->updatesEnabled());
    QVERIFY(m_page->updatesEnabled());
}

void TestScreen::BusyShowsAtOnce()
{
    m_page->Recolour(Qt::green);
    PbeSetBusy(true);
    QCOMPARE(ColourAt(kInPage), Qt::green);
    PbeSetBusy(false);
}

QTEST_MAIN(TestScreen)
#include "tst_platform_screen.moc"
