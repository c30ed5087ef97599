// SPDX-License-Identifier: Apache-2.0
// The terminal at standard input, and the console whose screen is drawn on: as each screen wants them, and in
// the end as they were before the first one.
#pragma once

#include <optional>

#include <termios.h>

#include "host/service/descriptor.h"
#include "host/service/virtual_terminal.h"

namespace host {

class Terminals
{
public:
    // One at a time. From here on they are put right also when a signal ends the program, save SIGKILL.
    Terminals();
    ~Terminals();
    Terminals(const Terminals &) = delete;
    Terminals &operator=(const Terminals &) = delete;

    // Of standard input, at which a person can be asked line by line.
    bool IsTerminal() const { return m_settings.has_value(); }
    // For a screen that draws: where it draws on the framebuffer the console is left to it.
    void GiveToPicture() const;
    // What was typed for whoever has ended is forgotten with it. Safe in a signal handler.
    void Restore() const;

private:
    void Forget() const; // what was typed

    std::optional<termios> m_settings;
    Descriptor m_console; // where it is not standard input
    std::optional<VirtualTerminal> m_drawnOn;
};

} // namespace host
