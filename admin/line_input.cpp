#include "line_input.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "failure.h"

namespace admin {
namespace {

constexpr std::size_t kMaxLineBytes = 512; // as the standard tool has it
constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGTSTP};
constexpr std::size_t kSignalCount = std::size(kSignals);

volatile std::sig_atomic_t s_signal = 0;

void OnSignal(int signal)
{
    s_signal = signal;
}

// Holds signals that end or stop the program until the terminal echoes again.
class HeldSignals
{
public:
    HeldSignals()
    {
        s_signal = 0;
        struct sigaction action = {};
        action.sa_handler = OnSignal; // without SA_RESTART: reading ends
        for (std::size_t i = 0; i < kSignalCount; ++i)
            sigaction(kSignals[i], &action, &m_former[i]);
    }
    ~HeldSignals()
    {
        for (std::size_t i = 0; i < kSignalCount; ++i)
            sigaction(kSignals[i], &m_former[i], nullptr);
        if (s_signal)
            raise(s_signal);
    }
    HeldSignals(const HeldSignals &) = delete;
    HeldSignals &operator=(const HeldSignals &) = delete;

private:
    struct sigaction m_former[kSignalCount];
};

class SilentTerminal
{
public:
    SilentTerminal()
        : m_file(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY))
    {
        if (m_file < 0 || tcgetattr(m_file, &m_former) != 0)
            throw Failure("there is no terminal to ask for a password; give --password-stdin", kExitUsage);
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
int ReadByte(int file, char *byte)
{
    for (;;) {
        const ssize_t count = read(file, byte, 1);
        if (count >= 0)
            return static_cast<int>(count);
        if (errno != EINTR)
            return 0;
        if (s_signal)
            return -1;
    }
}

void DropCarriageReturn(volume::Secret *line)
{
    if (!line->IsEmpty() && line->View().back() == '\r')
        line->SetSize(line->Size() - 1);
}

} // namespace

LineStatus ReadSecretLine(int file, volume::Secret *line)
{
    *line = volume::Secret(kMaxLineBytes + 1); // room for a carriage return
    bool fits = true;
    bool any = false;
    char byte = 0;
    int status = 0;
    while ((status = ReadByte(file, &byte)) > 0 && byte != '\n') {
        any = true;
        fits = line->Append(byte) && fits;
    }
    byte = 0;
    if (status < 0)
        return LineStatus::Interrupted;
    if (status == 0 && !any)
        return LineStatus::Ended;
    DropCarriageReturn(line);
    return fits && line->Size() <= kMaxLineBytes ? LineStatus::Complete : LineStatus::TooLong;
}

LineStatus AskSecretLine(const char *prompt, volume::Secret *line)
{
    const HeldSignals held;
    const SilentTerminal terminal;
    terminal.Say(prompt);
    const LineStatus status = ReadSecretLine(terminal.File(), line);
    terminal.Say("\n");
    return status;
}

} // namespace admin
