// SPDX-License-Identifier: Apache-2.0
#include "platform/screen/pointer.h"

#include "platform/screen/x11.h"

namespace pbe {

void Pointer::SetVisible(bool visible)
{
    // The server counts: to every hiding belongs exactly one showing.
    if (visible == m_visible)
        return;
    m_visible = visible;
    x11::ShowPointer(visible);
}

} // namespace pbe
