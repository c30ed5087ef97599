// SPDX-License-Identifier: Apache-2.0
// The descriptors that the host has its word of. They outlive the application: the next one goes on with
// them.
#pragma once

#include <map>
#include <memory>

#include <QSocketNotifier>

namespace pbe {

// Goes when the event loop has turned, for it may be at work.
struct DeleteLater
{
    void operator()(QObject *object) const { object->deleteLater(); }
};

class HostWatch
{
public:
    HostWatch();
    ~HostWatch();
    HostWatch(const HostWatch &) = delete;
    HostWatch &operator=(const HostWatch &) = delete;

    void Begin(int descriptor);
    void End(int descriptor);

private:
    void Call(int descriptor);

    std::map<int, std::unique_ptr<QSocketNotifier, DeleteLater>> m_notifiers;
};

} // namespace pbe
