// SPDX-License-Identifier: Apache-2.0
#include "host/service/stop_signals.h"

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

#include "pbe/application.h"

namespace host {
namespace {

constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

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
    for (const int signal : kStopSignals)
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN); // a log that nobody reads any more keeps nobody out
}

bool StopRequested()
{
    return s_stopRequested != 0;
}

// Nor does setting the terminal right from the background stop the program.
int StopSignalDescriptor()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kStopSignals)
        sigaddset(&signals, signal);
    const int descriptor = signalfd(-1, &signals, SFD_CLOEXEC);
    sigaddset(&signals, SIGTTOU);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    return descriptor;
}

} // namespace host
