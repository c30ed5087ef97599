// SPDX-License-Identifier: Apache-2.0
// The display while repaint is off and when it is on again, looked at by its pixels.
#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWidget>

#include "pbe/application.h"
#include "pbe/screen.h"

namespace {

void Recolour(QWidget &window, const QColor &colour)
{
    window.setPalette(QPalette(colour, colour));
}

void Show(QWidget &window, const QRect &place, const QColor &colour)
{
    window.setWindowFlag(Qt::FramelessWindowHint);
    window.setGeometry(place);
    Recolour(window, colour);
    window.show();
}

// Of the page, of the box over it, and of a window that comes late.
QList<QColor> Colours()
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    return {screen.pixelColor(20, 250), screen.pixelColor(150, 150), screen.pixelColor(230, 30)};
}

} // namespace

class TestScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_page = std::make_unique<QWidget>();
        Show(*m_page, {0, 0, 400, 300}, Qt::red);
        QTRY_COMPARE(Colours()[0], Qt::red);
    }
    void cleanup() { m_page.reset(); }

    void RepaintOffKeepsThePicture()
    {
        QWidget box, late, disabled;
        disabled.setUpdatesEnabled(false);
        Show(box, {100, 100, 100, 100}, Qt::cyan);
        const QList<QColor> before{Qt::red, Qt::cyan, Qt::red};
        QTRY_COMPARE(Colours(), before);
        QPbeScreen *screen = QPbeScreen::Current();
        screen->TurnOffScreenRepaint();
        screen->TurnOffScreenRepaint();
        Recolour(*m_page, Qt::green);
        m_page->repaint();
        box.hide();
        Show(late, {200, 0, 60, 60}, Qt::blue);
        late.repaint();
        // Long enough for a painting that should not be.
        QTest::qWait(150);
        QCOMPARE(Colours(), before);

        screen->TurnOnScreenRepaint();
        QCOMPARE(Colours(), (QList<QColor>{Qt::green, Qt::green, Qt::blue}));
        QVERIFY(!disabled.updatesEnabled());
        Recolour(*m_page, Qt::magenta);
        QTRY_COMPARE(Colours()[0], Qt::magenta);
    }

    void BusyShowsAtOnceAndNests()
    {
        bool other = false;
        QTimer::singleShot(0, m_page.get(), [&other] { other = true; });
        Recolour(*m_page, Qt::green);
        for (const bool busy : {true, true, false}) {
            PbeSetBusy(busy);
            QCOMPARE(Colours()[0], Qt::green);
            QVERIFY(QApplication::overrideCursor());
        }
        QVERIFY(!other);
        PbeSetBusy(false);
        PbeSetBusy(false);
        QVERIFY(!QApplication::overrideCursor());
    }

private:
    std::unique_ptr<QWidget> m_page;
};

QTEST_MAIN(TestScreen)
#include "tst_platform_screen.moc"
