// SPDX-License-Identifier: Apache-2.0
// Loaded into a program before its own libraries: reports when the login button has been painted for the
// first time, and ends the program. The view and the bare dialog carry the same probe, so that its cost
// cancels out.
#include <cstdlib>
#include <fstream>
#include <string>

#include <time.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QWidget>

#include "bench/paint_report.h"

namespace {

std::int64_t Now()
{
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

// Not getrusage: that remembers what the starter used before it became this program.
std::int64_t PeakKib()
{
    std::ifstream status("/proc/self/status");
    std::int64_t kib = 0;
    for (std::string word; status >> word;) {
        if (word == "VmHWM:")
            status >> kib;
    }
    return kib;
}

[[noreturn]] void Report()
{
    const bench::PaintReport report{Now(), PeakKib()};
    const bool written = write(bench::kReportDescriptor, &report, sizeof report) == sizeof report;
    _exit(written ? EXIT_SUCCESS : EXIT_FAILURE);
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
