// Stop, busy and pointer, as they meet the application object: before it, in its loops, after it.
#include <csignal>
#include <memory>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include "pbe/application.h"
#include "pbe/screen.h"

namespace {

int s_argumentCount = 1;
char s_program[] = "tst";
char *s_arguments[] = {s_program, nullptr};

struct Application : QApplication
{
    Application()
        : QApplication(s_argumentCount, s_arguments)
    {
    }
};

class PaintCounter : public QWidget
{
public:
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override { ++paints; }
};

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void StopEndsEveryLoop_data();
    void StopEndsEveryLoop();
    void StopBeforeTheApplication();
    void BusyNests();
    void BusyPaintsAndDoesNothingElse();
    void StateBeginsAnew();
};

void TestApplication::StopEndsEveryLoop_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("main loop") << 0;
    QTest::newRow("dialog") << 1;
    QTest::newRow("dialog over a dialog") << 2;
}

void TestApplication::StopEndsEveryLoop()
{
    QFETCH(int, depth);
    Application application;
    std::signal(SIGUSR1, [](int) { PbeRequestStop(); });
    int ended = 0;
    std::function<void(int)> nest = [&](int left) {
        if (left == 0) {
            std::raise(SIGUSR1);
            return;
        }
        QDialog dialog;
        QTimer::singleShot(0, &dialog, [&nest, left] { nest(left - 1); });
        dialog.exec();
        ++ended;
        // What a caller shows next must not hold up the end.
        QDialog next;
        next.exec();
    };
    QTimer::singleShot(0, &application, [&] { nest(depth); });
    QCOMPARE(QApplication::exec(), 1);
    QCOMPARE(ended, depth);
    std::signal(SIGUSR1, SIG_DFL);
}

void TestApplication::StopBeforeTheApplication()
{
    PbeRequestStop();
    PbeRequestStop();
    {
        Application application;
        // No loop runs yet that could end.
        QCoreApplication::processEvents();
        QCOMPARE(QApplication::exec(), 1);
    }
    Application next;
    QTimer::singleShot(50, &next, [] { QCoreApplication::exit(7); });
    QCOMPARE(QApplication::exec(), 7);
}

void TestApplication::BusyNests()
{
    PbeSetBusy(true);
    Application application;
    QApplication::setOverrideCursor(Qt::CrossCursor);
    const auto shape = [] { return QApplication::overrideCursor()->shape(); };
    PbeSetBusy(false);
    QCOMPARE(shape(), Qt::CrossCursor);
    PbeSetBusy(true);
    PbeSetBusy(true);
    QCOMPARE(shape(), Qt::WaitCursor);
    PbeSetBusy(false);
    QCOMPARE(shape(), Qt::WaitCursor);
    PbeSetBusy(false);
    QCOMPARE(shape(), Qt::CrossCursor);
    QApplication::restoreOverrideCursor();
    QVERIFY(!QApplication::overrideCursor());
}

void TestApplication::BusyPaintsAndDoesNothingElse()
{
    Application application;
    PaintCounter window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    bool other = false;
    QTimer::singleShot(0, &window, [&other] { other = true; });
    QMetaObject::invokeMethod(
        &window, [&other] { other = true; }, Qt::QueuedConnection);
    const int before = window.paints;
    PbeSetBusy(true);
    QCOMPARE(window.paints, before + 1);
    QVERIFY(!other);
    PbeSetBusy(false);
}

void TestApplication::StateBeginsAnew()
{
    QPbeScreen *screen = QPbeScreen::Current();
    QVERIFY(screen);
    for (int run = 0; run < 2; ++run) {
        Application application;
        QVERIFY(screen->IsPointerVisible());
        PaintCounter window;
        window.show();
        QTRY_VERIFY(window.paints > 0);
        screen->SetPointerVisible(false);
        QVERIFY(!screen->IsPointerVisible());
        QVERIFY(!QApplication::overrideCursor());
        screen->TurnOffScreenRepaint();
        PbeSetBusy(true);
    }
    Application application;
    QVERIFY(!QApplication::overrideCursor());
}

QTEST_APPLESS_MAIN(TestApplication)
#include "tst_platform_application.moc"
