// SPDX-License-Identifier: Apache-2.0
#include "platform/stop.h"

#include <cerrno>
#include <cstdint>

#include <sys/eventfd.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QThread>

#include "pbe/application.h"

namespace pbe {

namespace {

constexpr int kStopped = 1;

// Made when the library is loaded, since a signal handler could not make it. It holds a request until an
// event loop takes it.
const int s_request = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);

void OnRequest()
{
    // Outside a loop there is nothing to end yet: the request waits.
    if (QThread::currentThread()->loopLevel() == 0)
        return;
    std::uint64_t requests = 0;
    if (read(s_request, &requests, sizeof requests) == sizeof requests)
        QCoreApplication::exit(kStopped);
}

} // namespace

StopWatch::StopWatch()
    : m_notifier(s_request, QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, OnRequest);
}

} // namespace pbe

void PbeRequestStop()
{
    const int error = errno;
    const std::uint64_t request = 1;
    // It can only fail when the counter is full, and then a request is waiting already.
    [[maybe_unused]] const ssize_t written = write(pbe::s_request, &request, sizeof request);
    errno = error;
}
