// SPDX-License-Identifier: Apache-2.0
// The settings of the terminal at standard input, as they were before a screen changed them.
#pragma once

#include <termios.h>

namespace host {

class TerminalSettings
{
public:
    TerminalSettings();
    ~TerminalSettings() { Restore(); }
    TerminalSettings(const TerminalSettings &) = delete;
    TerminalSettings &operator=(const TerminalSettings &) = delete;

    bool IsTerminal() const { return m_known; }
    // What was typed for whoever has ended is forgotten with it.
    void Restore() const;

private:
    termios m_settings{};
    bool m_known;
};

} // namespace host
