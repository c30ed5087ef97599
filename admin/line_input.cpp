// SPDX-License-Identifier: Apache-2.0
#include "admin/line_input.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <libcryptsetup.h>

#include "admin/failure.h"
#include "admin/signals.h"

namespace admin {
namespace {

constexpr std::size_t kMaxLineBytes = 512; // as the standard tool has it
volatile std::sig_atomic_t s_signal = 0;

void OnSignal(int signal)
{
    s_signal = signal;
}

// Keeps the signals back until the terminal echoes again. They are let in only while waiting for input, so
// that none can slip between a look at s_signal and the wait.
class SignalWatch
{
public:
    SignalWatch()
    {
        s_signal = 0;
        struct sigaction action = {};
        action.sa_handler = OnSignal;
        for (std::size_t i = 0; i < std::size(kInterruptions); ++i)
            sigaction(kInterruptions[i], &action, &m_former[i]);
    }
    ~SignalWatch()
    {
        for (std::size_t i = 0; i < std::size(kInterruptions); ++i)
            sigaction(kInterruptions[i], &m_former[i], nullptr);
        if (s_signal)
            raise(s_signal); // still held
    }
    SignalWatch(const SignalWatch &) = delete;
    SignalWatch &operator=(const SignalWatch &) = delete;

    // False when a signal came instead of input.
    bool WaitForInput(int file) const
    {
        pollfd input{file, POLLIN, 0};
        while (ppoll(&input, 1, nullptr, &m_held.FormerMask()) < 0 && errno == EINTR) {
            if (s_signal)
                return false;
        }
        return true;
    }

private:
    HeldSignals m_held;
    struct sigaction m_former[std::size(kInterruptions)];
};

class SilentTerminal
{
public:
    SilentTerminal()
        : m_file(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
    {
        if (m_file < 0 || tcgetattr(m_file, &m_former) != 0)
            throw Failure("there is no terminal to ask at; give --password-stdin or --passphrase-stdin",
                          kExitUsage);
        termios silent = m_former;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHOE | ECHOK | ECHONL);
        tcsetattr(m_file, TCSAFLUSH, &silent);
    }
    ~SilentTerminal()
    {
        tcsetattr(m_file, TCSAFLUSH, &m_former);
        close(m_file);
    }
    SilentTerminal(const SilentTerminal &) = delete;
    SilentTerminal &operator=(const SilentTerminal &) = delete;

    int File() const { return m_file; }
    // The display only: when it is gone, reading fails too.
    void Say(const char *text) const
    {
        [[maybe_unused]] auto written = write(m_file, text, std::strlen(text));
    }

private:
    int m_file;
    termios m_former{};
};

// 1 for a byte, 0 at the end, -1 after a signal.
int ReadByte(int file, const SignalWatch *signals, char *byte)
{
    if (signals && !signals->WaitForInput(file))
        return -1;
    ssize_t count = 0;
    do
        count = read(file, byte, 1);
    while (count < 0 && errno == EINTR);
    return count > 0 ? 1 : 0;
}

void DropCarriageReturn(base::Secret *line)
{
    if (!line->IsEmpty() && line->View().back() == '\r')
        line->SetSize(line->Size() - 1);
}

LineStatus ReadLine(int file, const SignalWatch *signals, base::Secret *line)
{
    *line = base::Secret(kMaxLineBytes + 1); // room for a carriage return
    bool fits = true;
    bool any = false;
    char byte = 0;
    int status = 0;
    while ((status = ReadByte(file, signals, &byte)) > 0 && byte != '\n') {
        any = true;
        fits = line->Append(byte) && fits;
    }
    crypt_safe_memzero(&byte, sizeof byte);
    if (status < 0)
        return LineStatus::Interrupted;
    if (status == 0 && !any)
        return LineStatus::Ended;
    DropCarriageReturn(line);
    return fits && line->Size() <= kMaxLineBytes ? LineStatus::Complete : LineStatus::TooLong;
}

} // namespace

LineStatus ReadSecretLine(int file, base::Secret *line)
{
    return ReadLine(file, nullptr, line);
}

LineStatus AskSecretLine(const char *prompt, base::Secret *line)
{
    const SignalWatch signals;
    const SilentTerminal terminal;
    terminal.Say(prompt);
    const LineStatus status = ReadLine(terminal.File(), &signals, line);
    terminal.Say("\n");
    return status;
}

} // namespace admin
