// SPDX-License-Identifier: Apache-2.0
// Tells the windows when devices come and go.
#pragma once

#include <memory>
#include <optional>

#include <QTimer>

#include "platform/devices/pointing_devices.h"
#include "platform/devices/token_notices.h"

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
    TokenNotices m_tokens;
};

} // namespace pbe
