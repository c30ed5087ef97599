// SPDX-License-Identifier: Apache-2.0
#include "host/text/terminal.h"

#include <poll.h>
#include <unistd.h>

#include "base/write_all.h"
#include "host/protocol/channel.h"
#include "host/protocol/messages.h"

namespace text {

Terminal::Terminal(int watched, std::function<bool()> goesOn)
    : m_watched(watched)
    , m_goesOn(std::move(goesOn))
    , m_usable(tcgetattr(STDIN_FILENO, &m_before) == 0)
{
    Set(Echo::Off);
}

Terminal::~Terminal()
{
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_before);
}

// Where nothing can be shown, reading fails as well.
void Terminal::Say(std::string_view line) const
{
    static_cast<void>(base::WriteAll(STDOUT_FILENO, line));
}

// What is no terminal takes no settings. No key ends or stops this program, or the end of the input: whoever
// is at the line only gets what it asks.
void Terminal::Set(Echo echo) const
{
    termios settings = m_before;
    settings.c_iflag = (settings.c_iflag & ~static_cast<tcflag_t>(IGNCR | IXON)) | ICRNL | IUTF8;
    settings.c_oflag |= OPOST | ONLCR;
    settings.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ISIG);
    settings.c_lflag |= ICANON | ECHOE | ECHOK | (echo == Echo::On ? ECHO : 0);
    settings.c_cc[VEOF] = _POSIX_VDISABLE;
    tcsetattr(STDIN_FILENO, TCSADRAIN, &settings);
}

Terminal::Input Terminal::Await(int milliseconds) const
{
    pollfd entries[] = {{STDIN_FILENO, POLLIN, 0}, {m_watched, POLLIN, 0}};
    const int ready = poll(entries, 2, milliseconds);
    if (entries[1].revents != 0 && !m_goesOn())
        return Input::Ended;
    return ready > 0 && entries[0].revents != 0 ? Input::Ready : Input::Nothing;
}

std::optional<base::Secret> Terminal::Ask(std::string_view prompt, Echo echo) const
{
    Set(echo);
    Say(prompt);
    std::optional<base::Secret> line(protocol::kMaxTyped);
    if (!ReadLine(&*line))
        line.reset();
    Set(Echo::Off);
    if (echo == Echo::Off)
        Say("\n");
    return line;
}

// What is ready to be read is read without waiting, so no signal comes between.
bool Terminal::ReadLine(base::Secret *line) const
{
    bool fits = true;
    char byte = 0;
    while (byte != '\n') {
        const Input input = Await(-1);
        if (input == Input::Ended || (input == Input::Ready && read(STDIN_FILENO, &byte, 1) != 1))
            return false;
        if (input == Input::Ready && byte != '\n')
            fits &= line->Append(byte);
    }
    if (!fits)
        line->Wipe();
    return true;
}

bool Terminal::Wait(std::chrono::seconds time) const
{
    constexpr std::chrono::milliseconds kLongest = std::chrono::minutes(1); // for one poll
    const protocol::Deadline deadline(time);
    while (const auto left = std::min(*deadline.Left(), kLongest).count()) {
        const Input input = Await(static_cast<int>(left));
        if (input == Input::Ended)
            return false;
        if (input == Input::Ready)
            Discard();
    }
    return true;
}

void Terminal::Discard() const
{
    tcflush(STDIN_FILENO, TCIFLUSH);
}

} // namespace text
