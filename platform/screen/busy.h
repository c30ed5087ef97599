// SPDX-License-Identifier: Apache-2.0
// The wait cursor that the host asks for while it works and the event loop stands still.
#pragma once

namespace pbe {

class Busy
{
public:
    void Begin();
    // Without a Begin it does nothing.
    void End();

private:
    int m_depth = 0;
};

} // namespace pbe
