// SPDX-License-Identifier: Apache-2.0
#include "platform/watch.h"

#include <fcntl.h>

#include "pbe/application.h"
#include "platform/application.h"
#include "platform/own_log.h"

namespace pbe {

namespace {

struct Callback
{
    void (*function)(void *);
    void *context;
};

std::map<int, Callback> &Callbacks()
{
    static std::map<int, Callback> s_callbacks;
    return s_callbacks;
}

} // namespace

HostWatch::HostWatch()
{
    for (const auto &[descriptor, callback] : Callbacks())
        Begin(descriptor);
}

// No event loop turns any more.
HostWatch::~HostWatch()
{
    for (auto &[descriptor, notifier] : m_notifiers)
        delete notifier.release();
}

void HostWatch::Begin(int descriptor)
{
    End(descriptor);
    auto *notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read);
    m_notifiers[descriptor].reset(notifier);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier,
                     [this, descriptor] { Call(descriptor); });
}

void HostWatch::End(int descriptor)
{
    const auto found = m_notifiers.find(descriptor);
    if (found == m_notifiers.end())
        return;
    found->second->disconnect();
    found->second->setEnabled(false);
    m_notifiers.erase(found);
}

// Off while the host is at work: a loop of its own would call it again and again for what it has not read.
void HostWatch::Call(int descriptor)
{
    QSocketNotifier *notifier = m_notifiers.at(descriptor).get();
    notifier->setEnabled(false);
    const Callback callback = Callbacks().at(descriptor);
    callback.function(callback.context);
    const auto found = m_notifiers.find(descriptor);
    if (found != m_notifiers.end() && found->second.get() == notifier)
        notifier->setEnabled(true);
}

} // namespace pbe

void PbeWatch(int descriptor, void (*callback)(void *), void *context)
{
    pbe::Application *application = pbe::Application::Current();
    pbe::Callbacks().erase(descriptor);
    if (application)
        application->hostWatch.End(descriptor);
    if (!callback)
        return;
    if (fcntl(descriptor, F_GETFD) < 0) {
        pbe::LogOwn(pbe::kErrors, "a descriptor that is not open cannot be watched");
        return;
    }
    pbe::Callbacks()[descriptor] = {callback, context};
    if (application)
        application->hostWatch.Begin(descriptor);
}
