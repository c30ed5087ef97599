// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_keeper.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>

#include "host/log.h"
#include "host/protocol/socket_channel.h"
#include "host/service/stop_signals.h"

namespace host {
namespace {

constexpr std::chrono::milliseconds kMomentToEnd{3000};
constexpr std::chrono::minutes kRestartPeriod{1};
constexpr std::size_t kMaxRestarts = 2;

Descriptor Checked(int descriptor)
{
    if (descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "nothing to wait for");
    return Descriptor(descriptor);
}

bool IsTheEnd(const protocol::AnyReply &reply)
{
    const auto *start = std::get_if<protocol::StartReply>(&reply);
    return start && (start->result == protocol::StartResult::Started ||
                     start->result == protocol::StartResult::TestBootEnded);
}

} // namespace

ScreenKeeper::ScreenKeeper(Service &service, const TerminalSettings &terminal, ScreenCommand command)
    : m_service(service)
    , m_terminal(terminal)
    , m_command(std::move(command))
    , m_signals(Checked(StopSignalDescriptor()))
    , m_answered(Checked(eventfd(0, EFD_CLOEXEC)))
{
}

void ScreenKeeper::Run()
{
    m_stopped = StopRequested(); // before the signals went to the descriptor
    if (!m_stopped)
        StartScreen();
    while (m_screen || IsAnswering())
        Step();
}

ScreenKeeper::Screen::Screen(const ScreenCommand &command, std::pair<int, int> ends)
    : server(std::make_unique<protocol::SocketChannel>(ends.first))
    , process(command, ends.second)
{
}

void ScreenKeeper::StartScreen()
try {
    const std::pair<int, int> ends = protocol::SocketChannel::MakeSockets();
    const Descriptor theirs(ends.second);
    m_screenEnds.reset();
    m_screen.emplace(m_command, ends);
} catch (const std::system_error &fault) {
    m_whyGivenUp = std::string("before its start: ") + fault.what();
}

// A new screen's first question waits until the former one's last is answered.
void ScreenKeeper::Step()
{
    pollfd entries[] = {{m_signals.Number(), POLLIN, 0},
                        {m_answered.Number(), POLLIN, 0},
                        {m_screen && !m_outdated ? m_screen->server.Descriptor() : -1, POLLIN, 0},
                        {m_screen ? m_screen->process.Descriptor() : -1, POLLIN, 0}};
    const protocol::Limit left = m_screen && m_screenEnds ? m_screenEnds->Left() : std::nullopt;
    const int ready = poll(entries, std::size(entries), left ? static_cast<int>(left->count()) : -1);
    if (ready == 0 && m_screen) {
        m_screenEnds.reset();
        m_screen->process.Kill();
    }
    if (ready <= 0)
        return;
    if (entries[0].revents != 0)
        OnSignal();
    if (entries[1].revents != 0)
        FinishAnswer();
    if (entries[2].revents != 0 && m_screen->server.IsOpen())
        Listen();
    if (entries[3].revents != 0)
        OnScreenEnd();
}

void ScreenKeeper::Listen()
{
    std::optional<protocol::Request> request = m_screen->server.Receive();
    if (request) {
        m_reply = std::async(std::launch::async, [this, asked = std::move(*request)] {
            protocol::AnyReply reply = m_service.Answer(asked);
            eventfd_write(m_answered.Number(), 1);
            return reply;
        });
    } else if (!m_screen->server.IsOpen()) {
        if (!m_finished)
            Log(kLogErrors, std::string("The screen: ") + protocol::Describe(m_screen->server.WhyClosed()));
        EndScreen();
    }
}

void ScreenKeeper::FinishAnswer()
{
    eventfd_t count = 0;
    eventfd_read(m_answered.Number(), &count);
    const protocol::AnyReply reply = m_reply.get();
    m_finished |= IsTheEnd(reply);
    const bool told = !std::exchange(m_outdated, false) && m_screen &&
                      std::visit([this](const auto &one) { return m_screen->server.Reply(one); }, reply);
    if (!told)
        m_service.Forget();
    if (m_finished && m_screen) {
        m_screenEnds.emplace(kMomentToEnd);
        if (!told)
            EndScreen();
    }
}

void ScreenKeeper::OnScreenEnd()
{
    const std::string how = m_screen->process.Reap();
    m_screen.reset();
    m_terminal.Restore();
    m_outdated = IsAnswering();
    if (!m_outdated)
        m_service.Forget();
    if (IsOver())
        return;
    Log(kLogErrors, "The screen has ended " + how + ".");
    if (MayRestart())
        StartScreen();
    else
        m_whyGivenUp = how;
}

bool ScreenKeeper::MayRestart()
{
    const auto now = std::chrono::steady_clock::now();
    std::erase_if(m_restarts, [now](const auto &restart) { return now - restart > kRestartPeriod; });
    if (m_restarts.size() >= kMaxRestarts)
        return false;
    m_restarts.push_back(now);
    return true;
}

void ScreenKeeper::EndScreen()
{
    m_screen->server.Close();
    m_screenEnds.emplace(kMomentToEnd);
}

void ScreenKeeper::OnSignal()
{
    signalfd_siginfo signal{};
    if (read(m_signals.Number(), &signal, sizeof signal) != sizeof signal)
        return;
    if (m_stopped) {
        if (m_screen)
            m_screen->process.Kill();
        m_terminal.Restore();
        _exit(kExitSignal);
    }
    m_stopped = true;
    if (m_screen) {
        m_screen->server.Tell(protocol::Stop{});
        EndScreen();
    }
}

} // namespace host
