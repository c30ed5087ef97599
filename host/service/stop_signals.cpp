#include "host/service/stop_signals.h"

#include <csignal>
#include <initializer_list>
#include <unistd.h>

#include "pbe/application.h"

namespace host {
namespace {

volatile std::sig_atomic_t s_stopRequested = 0;

void OnStopSignal(int)
{
    if (s_stopRequested)
        _exit(kExitSignal);
    s_stopRequested = 1;
    PbeRequestStop();
}

} // namespace

void InstallStopSignals()
{
    struct sigaction action = {};
    action.sa_handler = OnStopSignal;
    action.sa_flags = SA_RESTART;
    for (int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a log that nobody reads any more keeps nobody out
}

bool StopRequested()
{
    return s_stopRequested != 0;
}

} // namespace host
