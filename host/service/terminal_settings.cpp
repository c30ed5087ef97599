// SPDX-License-Identifier: Apache-2.0
#include "host/service/terminal_settings.h"

#include <unistd.h>

namespace host {

TerminalSettings::TerminalSettings()
    : m_known(tcgetattr(STDIN_FILENO, &m_settings) == 0)
{
}

// Without waiting until all is written: a serial line may have been pulled out.
void TerminalSettings::Restore() const
{
    if (!m_known)
        return;
    tcflush(STDIN_FILENO, TCIFLUSH);
    tcsetattr(STDIN_FILENO, TCSANOW, &m_settings);
}

} // namespace host
