// SPDX-License-Identifier: Apache-2.0
// What the toolkit and its libraries read of the environment when the application object is made, settled
// when this library is loaded.
#include <cstdlib>

namespace {

__attribute__((constructor)) void Settle()
{
    // The toolkit's own input method would take the dead keys of the window system's layout before the
    // keyboard sees them.
    setenv("QT_IM_MODULE", "none", 1);
    // Unnamed, the time zone would be looked up again at each time that the toolkit converts, and it asks for
    // that of each picture.
    setenv("TZ", ":/etc/localtime", 0);
    // Signals are the host's. The framebuffer's screen would end the process on the spot, with the secrets in
    // memory and the lights of the keyboard as they are.
    setenv("QT_QPA_NO_SIGNAL_HANDLER", "1", 1);
    // Before the system starts there is no session and no bus of it. To find one, a program would be looked
    // for along PATH and started, with the rights of the host.
    setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
}

} // namespace
