// SPDX-License-Identifier: Apache-2.0
// Loaded into a program of the toolkit: writes the time (CLOCK_MONOTONIC, in nanoseconds) to standard output
// when the login button has been painted for the first time, and waits to be ended. The view and the bare
// dialog carry the same probe, so that its cost cancels out. With BENCH_PROBE_ENDS it ends the program.
#include <cstdio>
#include <cstdlib>

#include <time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

namespace {

[[noreturn]] void Report()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    std::printf("%lld%09ld\n", static_cast<long long>(time.tv_sec), time.tv_nsec);
    std::fflush(stdout);
    while (!std::getenv("BENCH_PROBE_ENDS"))
        pause();
    _exit(EXIT_SUCCESS);
}

class PaintProbe : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        // The whole window is painted and flushed in one go; what is queued meanwhile comes after that.
        if (event->type() == QEvent::Paint && receiver->isWidgetType() &&
            receiver->objectName() == u"loginButton" && static_cast<QWidget *>(receiver)->isVisible())
            QMetaObject::invokeMethod(this, Report, Qt::QueuedConnection);
        return false;
    }
};

void Start()
{
    qApp->installEventFilter(new PaintProbe(qApp));
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace
