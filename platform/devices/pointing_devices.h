// SPDX-License-Identifier: Apache-2.0
// Where the number of pointing devices comes from.
#pragma once

#include <functional>
#include <memory>

namespace pbe {

class PointingDevices
{
public:
    // Those that reach the running application: the X server's under X11, else the kernel's. Null where there
    // is no display.
    static std::unique_ptr<PointingDevices> OfThisPlatform();

    virtual ~PointingDevices() = default;

    virtual int Count() = 0;
    // Calls `changed` from now on whenever the number may have changed. Called once.
    virtual void Watch(std::function<void()> changed) = 0;
};

std::unique_ptr<PointingDevices> MakeX11Devices();
std::unique_ptr<PointingDevices> MakeUdevDevices();

} // namespace pbe
