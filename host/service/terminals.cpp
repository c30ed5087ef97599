// SPDX-License-Identifier: Apache-2.0
#include "host/service/terminals.h"

#include <csignal>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace host {
namespace {

// By default they end a program; what asks to end it is not among them.
constexpr int kFatalSignals[] = {SIGABRT, SIGALRM, SIGBUS,  SIGFPE,  SIGILL,  SIGPROF,   SIGQUIT, SIGSEGV,
                                 SIGSYS,  SIGTRAP, SIGUSR1, SIGUSR2, SIGXCPU, SIGVTALRM, SIGXFSZ};

const Terminals *s_terminals = nullptr;

// Then the signal does what it would have done.
void OnFatalSignal(int signal)
{
    if (s_terminals)
        s_terminals->Restore();
    std::raise(signal);
}

// Where somebody else catches one, a sanitizer, that stays.
void CatchFatalSignals()
{
    struct sigaction action = {};
    action.sa_handler = OnFatalSignal;
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    for (const int signal : kFatalSignals) {
        struct sigaction before = {};
        if (sigaction(signal, nullptr, &before) == 0 && before.sa_handler == SIG_DFL)
            sigaction(signal, &action, nullptr);
    }
}

std::string_view Environment(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

// As the toolkit will be told.
bool NamesFramebuffer()
{
    const std::string_view platform = Environment("QT_QPA_PLATFORM");
    return platform.starts_with("linuxfb") || platform.starts_with("eglfs");
}

bool MayDrawOnFramebuffer()
{
    return NamesFramebuffer() || (Environment("QT_QPA_PLATFORM").empty() && Environment("DISPLAY").empty() &&
                                  Environment("WAYLAND_DISPLAY").empty());
}

std::optional<termios> SettingsOfInput()
{
    termios settings{};
    return tcgetattr(STDIN_FILENO, &settings) == 0 ? std::optional(settings) : std::nullopt;
}

// Another program's meanwhile, when this one runs in the background.
bool IsInputOurs()
{
    const pid_t foreground = tcgetpgrp(STDIN_FILENO);
    return foreground < 0 || foreground == getpgrp();
}

} // namespace

// Standard input may be a serial line, while the person sits at the computer itself.
Terminals::Terminals()
    : m_settings(SettingsOfInput())
    , m_console(NamesFramebuffer() ? open("/dev/tty0", O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC) : -1)
{
    if (MayDrawOnFramebuffer())
        m_drawnOn = VirtualTerminal::At(STDIN_FILENO);
    if (!m_drawnOn && m_console.Number() >= 0)
        m_drawnOn = VirtualTerminal::At(m_console.Number());
    s_terminals = this;
    CatchFatalSignals();
}

Terminals::~Terminals()
{
    Restore();
    s_terminals = nullptr;
}

void Terminals::GiveToPicture() const
{
    if (m_drawnOn)
        m_drawnOn->GiveToPicture();
    Forget();
}

// Without waiting until all is written: a serial line may have been pulled out.
void Terminals::Restore() const
{
    if (m_drawnOn)
        m_drawnOn->Restore();
    if (m_settings && IsInputOurs())
        tcsetattr(STDIN_FILENO, TCSANOW, &*m_settings);
    Forget();
}

void Terminals::Forget() const
{
    if (m_drawnOn)
        m_drawnOn->Forget();
    if (m_settings && IsInputOurs())
        tcflush(STDIN_FILENO, TCIFLUSH);
}

} // namespace host
