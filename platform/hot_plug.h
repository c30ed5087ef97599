// Tells the windows when devices come and go.
#pragma once

#include <memory>
#include <optional>

#include <QTimer>

#include "pointing_devices.h"

namespace pbe {

// Posts an event of a type of pbe/events.h to every visible window, menus and tool tips left out.
void PostToWindows(int type);

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
