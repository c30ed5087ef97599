// SPDX-License-Identifier: Apache-2.0
// A console or a serial line. It is as before when this object ends.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string_view>

#include <termios.h>

#include "base/secret.h"

namespace text {

enum class Echo { On, Off };

class Terminal
{
public:
    // `watched` is a descriptor that may end the conversation: when it is readable, `goesOn` says whether it
    // does not. Both must outlive this object.
    Terminal(int watched, std::function<bool()> goesOn);
    ~Terminal();
    Terminal(const Terminal &) = delete;
    Terminal &operator=(const Terminal &) = delete;

    bool IsUsable() const { return m_usable; }
    void Say(std::string_view line) const;
    // A line without its end; what is longer than a password can be counts as empty. Nothing when the
    // conversation or the terminal has ended.
    std::optional<base::Secret> Ask(std::string_view prompt, Echo echo) const;
    // Lets the time pass; false when the conversation has ended.
    bool Wait(std::chrono::seconds time) const;
    // What was typed while nobody asked.
    void Discard() const;

private:
    enum class Input { Ready, Nothing, Ended };

    Input Await(int milliseconds) const;
    bool ReadLine(base::Secret *line) const;
    void Set(Echo echo) const;

    int m_watched;
    std::function<bool()> m_goesOn;
    termios m_before{};
    bool m_usable;
};

} // namespace text
