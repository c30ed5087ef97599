// SPDX-License-Identifier: Apache-2.0
#include "admin/progress.h"

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <iostream>
#include <mutex>
#include <system_error>
#include <unistd.h>

namespace admin {
namespace {

constexpr std::chrono::seconds kPatience{1};

void SayLater(const std::stop_token &stop, const char *what)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any().wait_for(lock, stop, kPatience, [] { return false; });
    if (!stop.stop_requested())
        std::cerr << "pba_admin: " << what << " ...\n";
}

} // namespace

// Signals are the business of the thread that works: it may be holding them back.
Progress::Progress(const char *what)
{
    if (!isatty(STDERR_FILENO))
        return;
    sigset_t all;
    sigset_t former;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &former);
    try {
        m_thread = std::jthread(SayLater, what);
    } catch (const std::system_error &) { // without a thread it stays silent
    }
    pthread_sigmask(SIG_SETMASK, &former, nullptr);
}

} // namespace admin
