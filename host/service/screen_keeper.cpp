// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_keeper.h"

#include <algorithm>
#include <system_error>

#include <poll.h>
#include <sys/signalfd.h>

#include "host/log.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/exit_codes.h"
#include "host/service/exit_codes.h"

namespace host {
namespace {

constexpr std::chrono::milliseconds kMomentToEnd{3000};
constexpr std::chrono::minutes kRestartPeriod{1};
constexpr std::size_t kMaxRestarts = 2;

bool IsTheEnd(const protocol::AnyReply &reply)
{
    const auto *start = std::get_if<protocol::StartReply>(&reply);
    return start && (start->result == protocol::StartResult::Started ||
                     start->result == protocol::StartResult::TestBootEnded);
}

// Another one of the same kind would fare no better, and the person has been told why.
bool IsForGood(const ScreenEnd &end)
{
    switch (end.code.value_or(kScreenFailed)) {
    case kScreenUsage:
    case kScreenClosed:
    case kScreenNoAccess:
    case kScreenCannotStand:
        return true;
    default:
        return false;
    }
}

GivenUp GiveUp(const ScreenEnd &end)
{
    if (!IsForGood(end))
        return {kExitViewFailed, "the screen has ended too often, the last time " + end.description};
    if (end.code == kScreenUsage)
        return {kExitUsage, {}};
    return {end.code == kScreenNoAccess ? kExitNoAccess : kExitViewFailed, {}};
}

} // namespace

ScreenKeeper::ScreenKeeper(const Terminals &terminals, int signals, std::vector<ScreenCommand> screens)
    : m_terminals(terminals)
    , m_signals(signals)
    , m_screens(std::move(screens))
{
}

void ScreenKeeper::Run(Service &service)
{
    m_service = &service;
    while (m_screen || m_worker.IsBusy())
        Step();
}

void ScreenKeeper::Dismiss()
{
    m_screen.reset();
    m_terminals.Restore();
}

ScreenKeeper::Screen::Screen(const ScreenCommand &command, std::pair<int, int> ends)
    : server(std::make_unique<protocol::SocketChannel>(ends.first))
    , process(command, ends.second)
{
}

void ScreenKeeper::StartScreen()
try {
    const ScreenCommand &command = m_screens.front();
    if (command.asksAtTerminal)
        m_terminals.Restore();
    else
        m_terminals.GiveToPicture();
    const std::pair<int, int> ends = protocol::SocketChannel::MakeSockets();
    const Descriptor theirs(ends.second);
    m_screenEnds.reset();
    m_screen.emplace(command, ends);
} catch (const std::system_error &fault) {
    m_terminals.Restore();
    m_givenUp = {kExitViewFailed, std::string("there is no screen: ") + fault.what()};
}

// A new screen's first question waits until the former one's last is answered.
void ScreenKeeper::Step()
{
    pollfd entries[] = {{m_signals, POLLIN, 0},
                        {m_worker.Done(), POLLIN, 0},
                        {IsListening() ? m_screen->server.Descriptor() : -1, POLLIN, 0},
                        {m_screen ? m_screen->process.Descriptor() : -1, POLLIN, 0},
                        {m_service ? m_service->Tokens().Descriptor() : -1, POLLIN, 0}};
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
        FinishWork();
    if (entries[2].revents != 0 && m_screen->server.IsOpen())
        Listen();
    if (entries[3].revents != 0)
        OnScreenEnd();
    if (entries[4].revents != 0)
        TellTokens();
}

void ScreenKeeper::Listen()
{
    std::optional<protocol::Request> request = m_screen->server.Receive();
    if (request) {
        m_worker.Begin([this, asked = std::move(*request)] { m_reply.emplace(m_service->Answer(asked)); });
    } else if (!m_screen->server.IsOpen()) {
        if (m_screen->server.WhyClosed() != protocol::Fault::Gone)
            Log(kLogErrors, std::string("The screen: ") + protocol::Describe(m_screen->server.WhyClosed()));
        EndScreen();
    }
}

// Each list once, and before an answer that was given with it in mind.
void ScreenKeeper::TellTokens()
{
    const std::optional<protocol::Tokens> tokens = m_service->Tokens().Take();
    if (m_screen && tokens && std::exchange(m_screen->listTold, tokens->generation) != tokens->generation)
        m_screen->server.Tell(*tokens);
}

void ScreenKeeper::FinishWork()
{
    m_worker.Finish();
    if (m_reply)
        FinishAnswer();
}

void ScreenKeeper::FinishAnswer()
{
    const protocol::AnyReply reply = std::move(*m_reply);
    m_reply.reset();
    m_finished |= IsTheEnd(reply);
    TellTokens();
    const bool told = !std::exchange(m_outdated, false) && m_screen &&
                      std::visit([this](const auto &one) { return m_screen->server.Reply(one); }, reply);
    if (!told)
        m_service->Forget();
    if (m_finished && m_screen) {
        m_screenEnds.emplace(kMomentToEnd);
        if (!told)
            EndScreen();
    }
}

void ScreenKeeper::OnScreenEnd()
{
    const ScreenEnd end = m_screen->process.Reap();
    m_screen.reset();
    m_outdated = m_service && m_worker.IsBusy();
    if (m_outdated)
        m_service->Interrupt();
    if (m_service && !m_outdated)
        m_service->Forget();
    if (m_finished || m_stopped)
        return m_terminals.Restore();
    Log(IsForGood(end) ? kLogCalls : kLogErrors, "The screen has ended " + end.description + ".");
    Replace(end);
}

void ScreenKeeper::Replace(const ScreenEnd &end)
{
    if (!IsForGood(end) && MayRestart())
        return StartScreen();
    if (end.code != kScreenClosed && m_screens.size() > 1) {
        m_screens.erase(m_screens.begin());
        m_restarts.clear();
        return StartScreen();
    }
    m_terminals.Restore();
    m_givenUp = GiveUp(end);
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
    if (read(m_signals, &signal, sizeof signal) != sizeof signal)
        return;
    if (m_stopped) {
        Dismiss();
        _exit(kExitSignal);
    }
    m_stopped = true;
    if (m_service)
        m_service->Interrupt();
    if (m_screen) {
        m_screen->server.Tell(protocol::Stop{});
        EndScreen();
    }
}

} // namespace host
