// SPDX-License-Identifier: Apache-2.0
// The wait for another process, in which nothing of this one runs but a sign.
#include <cerrno>
#include <chrono>

#include <poll.h>

#include <QDeadlineTimer>

#include "platform/application.h"
#include "platform/screen/wait_sign.h"
#include "pbe/application.h"

namespace pbe {

namespace {

using namespace std::chrono_literals;

// A wait that nobody notices needs no sign.
constexpr auto kDelay = 300ms;
constexpr auto kPause = 40ms;

enum class Readiness { NotYet, Ready, Unusable };

bool s_isSignWanted = false;

// Errors and the end are found by reading.
Readiness Poll(int descriptor, QDeadlineTimer end)
{
    pollfd waiting{descriptor, POLLIN, 0};
    int count = 0;
    do
        count = poll(&waiting, 1, static_cast<int>(end.remainingTime()));
    while (count < 0 && errno == EINTR);
    if (count == 0)
        return Readiness::NotYet;
    return count == 1 && (waiting.revents & POLLNVAL) == 0 ? Readiness::Ready : Readiness::Unusable;
}

Readiness WaitWithSign(int descriptor, const RepaintGate &gate)
{
    Readiness readiness = Poll(descriptor, QDeadlineTimer(kDelay));
    WaitSign sign;
    while (readiness == Readiness::NotYet) {
        if (!gate.IsClosed())
            sign.Turn();
        readiness = Poll(descriptor, QDeadlineTimer(kPause));
    }
    return readiness;
}

Readiness Wait(int descriptor)
{
    Application *application = Application::Current();
    const bool showsSign = application && s_isSignWanted;
    const Readiness readiness = showsSign ? WaitWithSign(descriptor, application->repaint)
                                          : Poll(descriptor, QDeadlineTimer(QDeadlineTimer::Forever));
    if (application)
        application->typeAhead.Discard();
    return readiness;
}

} // namespace

} // namespace pbe

bool PbeAwait(int descriptor)
{
    using namespace pbe;
    // One below zero would be waited for without end.
    if (descriptor < 0)
        return false;
    Readiness readiness = Poll(descriptor, QDeadlineTimer(0));
    if (readiness == Readiness::NotYet)
        readiness = Wait(descriptor);
    return readiness == Readiness::Ready;
}

void PbeShowWaitSign(bool show)
{
    pbe::s_isSignWanted = show;
}
