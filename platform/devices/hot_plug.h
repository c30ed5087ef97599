// SPDX-License-Identifier: Apache-2.0
// Tells the windows when pointing devices come and go.
#pragma once

#include <memory>
#include <optional>

#include <QTimer>

#include "platform/devices/pointing_devices.h"

namespace pbe {

class HotPlug
{
public:
    HotPlug();

    int CountPointingDevices();

private:
    void Watch();
    void Compare();
    PointingDevices *Devices();

    std::unique_ptr<PointingDevices> m_devices;
    // The number that the windows go by.
    std::optional<int> m_known;
    QTimer m_watch;
    QTimer m_settle;
};

} // namespace pbe
