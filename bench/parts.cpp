// SPDX-License-Identifier: Apache-2.0
// The costs of single parts, measured inside a run of the real view on the real platform library. PBE_ROOT
// names prepared settings.
#include <chrono>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "bench/allocation_counter.h"
#include "tests/support/recording_host.h"
#include "module/settings/settings.h"
#include "bench/table_reporter.h"
#include "module/trace/trace.h"

namespace {

constexpr int kRepetitions = 15;

QDialog *Dialog()
{
    return static_cast<QDialog *>(QApplication::activeWindow());
}

void SuppressedTrace(benchmark::State &state)
{
    allocation_counter::Start();
    for ([[maybe_unused]] auto _ : state)
        pba::TraceMessage(pba::kTraceDetail) << "Screen index: " << 1;
    state.counters[bench::kAllocations] = static_cast<double>(allocation_counter::Stop().count);
    state.SetLabel("no allocation");
}

void WrittenTrace(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state)
        pba::TraceMessage(pba::kTraceError) << "Screen index: " << 1;
}

void LoadSettings(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        pba::Settings settings;
        if (settings.GetHostName() == u"Host name")
            state.SkipWithError("there are no settings");
    }
}

// Notes when a widget has been painted and the picture handed to the window system.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }

    void Wait()
    {
        while (!m_flushed)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(
                this, [this] { m_flushed = true; }, Qt::QueuedConnection);
        return false;
    }

private:
    bool m_flushed = false;
};

double SecondsToPaint(const char *clicked, const char *painted)
{
    const auto button = [](const char *name) {
        return Dialog()->findChild<QPushButton *>(QString::fromLatin1(name));
    };
    PaintWatch watch(button(painted));
    const auto start = std::chrono::steady_clock::now();
    button(clicked)->click();
    watch.Wait();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void FillLoginPage()
{
    for (const auto *name : {"loginUserName", "loginPassword"})
        Dialog()->findChild<QLineEdit *>(QString::fromLatin1(name))->setText(u"bench"_qs);
    QCoreApplication::processEvents();
}

// From the login page to the password change and back; the host asks for both.
void PageSwitch(benchmark::State &state)
{
    bool there = false;
    for ([[maybe_unused]] auto _ : state) {
        FillLoginPage();
        state.SetIterationTime(there ? SecondsToPaint("cancelPasswordChange", "loginButton")
                                     : SecondsToPaint("loginButton", "saveNewPasswordButton"));
        there = !there;
    }
    if (there)
        SecondsToPaint("cancelPasswordChange", "loginButton");
    state.SetLabel("under 16 ms");
}

void Register(const char *name, void (*function)(benchmark::State &), benchmark::TimeUnit unit)
{
    auto *registered = benchmark::RegisterBenchmark(name, function);
    registered->Unit(unit)->Repetitions(kRepetitions)->MinTime(0.05);
    if (function == PageSwitch)
        registered->UseManualTime();
}

void RegisterAll()
{
    Register("Suppressed trace message", SuppressedTrace, benchmark::kNanosecond);
    Register("Log line written", WrittenTrace, benchmark::kNanosecond);
    Register("Settings read and checked", LoadSettings, benchmark::kMicrosecond);
    Register("Page switch to its paint", PageSwitch, benchmark::kMillisecond);
}

// The benchmarks run when the login page stands; the run of the view ends with them.
void RunInside(RecordingHost &host)
{
    host.view->SetOptions(pba::kOptionLoginByPassword);
    host.view->ShowInitialScreen();
    QTimer::singleShot(0, qApp, [] {
        const QByteArray platform = QGuiApplication::platformName().toUtf8();
        bench::TableReporter reporter(platform.constData());
        const bool ran = benchmark::RunSpecifiedBenchmarks(&reporter) > 0;
        QCoreApplication::exit(ran ? 0 : 1);
    });
}

} // namespace

int main(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    RegisterAll();
    RecordingHost host;
    host.actions["Init"] = [&] { RunInside(host); };
    host.actions["Login"] = [&] { host.passwordView->ShowChangePassword({}, {}, false); };
    host.actions["CancelChangePassword"] = [&] { host.view->ShowInitialScreen(); };
    pba::IMainView *view = CreateMainView();
    view->SetBusinessLogic(&host);
    const kro::result_t result = view->Run();
    DeleteMainView(view);
    return kro::Failed(result) ? 1 : 0;
}
