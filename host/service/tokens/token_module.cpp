// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/token_module.h"

#include <algorithm>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

#include "base/text.h"
#include "host/log.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/exit_codes.h"
#include "host/token_process/wire.h"

namespace host {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using std::chrono::steady_clock;

// Whoever has lived that long is started again at once.
constexpr seconds kLongLife{60};
constexpr int kMaxDoublings = 8;
constexpr milliseconds kNone{0};

ScreenCommand CommandFor(const std::string &path, const TokenOptions &options)
{
    ScreenCommand command{options.program, {"--module", path}, {}, false};
    if (!options.user.empty())
        command.arguments.insert(command.arguments.end(), {"--user", options.user});
    return command;
}

// 1 s, 2 s, 4 s and so on.
seconds PauseAfter(int failures)
{
    return seconds(1 << std::min(failures - 1, kMaxDoublings));
}

// It has said what is wrong, and would only say it again.
bool IsForGood(const ScreenEnd &end)
{
    const int code = end.code.value_or(kScreenFailed);
    return code == kScreenUsage || code == kScreenCannotStand;
}

} // namespace

TokenModule::TokenModule(std::string path, const TokenOptions &options, Asked asked)
    : m_path(std::move(path))
    , m_options(options)
    , m_asked(std::move(asked))
    , m_wake(Descriptor::Checked(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)))
    , m_thread([this] { Run(); })
{
}

TokenModule::~TokenModule()
{
    m_stop = true;
    LookAnew();
    KillProcess();
    m_thread.join();
}

void TokenModule::LookAnew()
{
    eventfd_write(m_wake.Number(), 1);
}

void TokenModule::KillProcess()
{
    const std::lock_guard life(m_life);
    if (m_process)
        m_process->process.Kill();
}

void TokenModule::Run()
{
    while (!m_stop) {
        try {
            if (PauseLeft().value_or(kNone) == kNone)
                AskForTokens();
        } catch (const std::bad_alloc &) {
            // The next wish may find more memory.
        }
        Wait();
    }
}

void TokenModule::AskForTokens()
{
    State state{true, false, {}};
    if (const auto reply = Turn(*this).List()) {
        state.loaded = reply->loaded;
        state.tokens = token_process::FromMessage(*reply);
    }
    m_asked(std::move(state));
}

// For a wish, the end of the process, or that of a pause.
void TokenModule::Wait()
{
    int process = -1;
    {
        const std::lock_guard turn(m_turn);
        process = m_process ? m_process->process.Descriptor() : -1;
    }
    pollfd entries[] = {{m_wake.Number(), POLLIN, 0}, {process, POLLIN, 0}};
    const protocol::Limit left = PauseLeft();
    poll(entries, std::size(entries), left ? static_cast<int>(left->count()) : -1);
    eventfd_t wishes = 0;
    eventfd_read(m_wake.Number(), &wishes);
}

// Nothing while there is a process, or never will be one.
protocol::Limit TokenModule::PauseLeft()
{
    const std::lock_guard turn(m_turn);
    if (m_process || m_givenUp)
        return std::nullopt;
    return std::max(std::chrono::ceil<milliseconds>(m_notBefore - steady_clock::now()), kNone);
}

// A process that has ended since it was asked last is found so by this question, which then goes to a new
// one.
std::optional<protocol::ListTokensReply> TokenModule::Turn::List()
{
    const bool fresh = !m_module.m_process;
    const auto ask = [this] {
        return m_module.StartProcess() ? Ask(protocol::ListTokens{}, m_module.m_options.ListTimeout())
                                       : std::nullopt;
    };
    auto reply = ask();
    return reply || fresh || m_module.m_hung ? std::move(reply) : ask();
}

TokenModule::Process::Process(const ScreenCommand &command, std::pair<int, int> ends)
    : channel(std::make_unique<protocol::SocketChannel>(ends.first))
    , process(command, ends.second)
{
}

bool TokenModule::StartProcess()
try {
    const std::lock_guard life(m_life);
    if (m_process || m_stop || m_givenUp)
        return m_process && !m_stop;
    const std::pair<int, int> ends = protocol::SocketChannel::MakeSockets();
    const Descriptor theirs(ends.second);
    m_process.emplace(CommandFor(m_path, m_options), ends);
    return true;
} catch (const std::system_error &fault) {
    Log(kLogErrors, std::string("No process for a PKCS#11 module: ") + fault.what());
    m_notBefore = steady_clock::now() + PauseAfter(++m_failures);
    return false;
}

void TokenModule::EndProcess()
{
    const std::lock_guard life(m_life);
    const protocol::Fault fault = m_process->channel.WhyClosed();
    m_process->process.Kill();
    const ScreenEnd end = m_process->process.Reap();
    const auto now = steady_clock::now();
    m_failures = now - m_process->start >= kLongLife ? 1 : m_failures + 1;
    m_notBefore = now + PauseAfter(m_failures);
    m_hung = fault == protocol::Fault::TimedOut;
    m_givenUp = IsForGood(end);
    m_process.reset();
    if (m_stop)
        return;
    const bool ended = fault == protocol::Fault::Gone || fault == protocol::Fault::Unread;
    Log(kLogErrors, "The PKCS#11 module " + base::Printable(m_path) +
                        (ended ? " has ended its process " + end.description
                               : std::string(" was killed: ") + protocol::Describe(fault)) +
                        ".");
}

} // namespace host
