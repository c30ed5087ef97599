// SPDX-License-Identifier: Apache-2.0
#include "host/service/stop_signals.h"

#include <csignal>
#include <initializer_list>

#include <sys/signalfd.h>

namespace host {

// Nor does setting the terminal right from the background stop the program, and a log that nobody reads any
// more keeps nobody out.
int TakeStopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaddset(&signals, signal);
    const int descriptor = signalfd(-1, &signals, SFD_CLOEXEC);
    sigaddset(&signals, SIGTTOU);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return descriptor;
}

} // namespace host
