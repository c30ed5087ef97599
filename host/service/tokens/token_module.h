// SPDX-License-Identifier: Apache-2.0
// A PKCS#11 module in its process. A process that hangs is killed; one that has ended is started anew, after
// pauses that grow, so that a module that always crashes costs nothing.
//
// A thread of this object's own asks for the tokens, so that no module waits for another one. It and a login
// take turns: one question at a time, and none of the list within a login.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "host/protocol/asker.h"
#include "host/protocol/token_messages.h"
#include "host/service/descriptor.h"
#include "host/service/screen_process.h"
#include "host/service/tokens/token_options.h"
#include "volume/token/token.h"

namespace host {

class TokenModule
{
public:
    // What the module has told last.
    struct State
    {
        bool asked = false; // and has answered, or was given up
        bool loaded = false;
        std::vector<token::Description> tokens;
    };
    // Called by the thread after each question for the tokens.
    using Asked = std::function<void(State)>;

    // Begins to ask. Throws std::system_error.
    TokenModule(std::string path, const TokenOptions &options, Asked asked);
    // Kills the process.
    ~TokenModule();
    TokenModule(const TokenModule &) = delete;
    TokenModule &operator=(const TokenModule &) = delete;

    // Asks again, soon. Any thread may call it, like the next one.
    void LookAnew();
    // Whatever it is doing.
    void KillProcess();

    // For who talks to the module in several questions, none of them its thread's.
    class Turn
    {
    public:
        explicit Turn(TokenModule &module)
            : m_module(module)
            , m_lock(module.m_turn)
        {
        }

        // Starts the process where there is none. Nothing when the module does not answer.
        std::optional<protocol::ListTokensReply> List();
        // Nothing when there is no process, it does not answer, or the question cannot be put into words.
        template <typename Request>
        std::optional<typename Request::Reply> Ask(const Request &request, std::chrono::milliseconds limit)
        {
            if (!m_module.m_process)
                return std::nullopt;
            auto reply = m_module.m_process->channel.Ask(request, limit);
            if (!m_module.m_process->channel.IsOpen())
                m_module.EndProcess();
            return reply;
        }
        const TokenOptions &Options() const { return m_module.m_options; }

    private:
        TokenModule &m_module;
        std::unique_lock<std::mutex> m_lock;
    };

private:
    using Time = std::chrono::steady_clock::time_point;

    struct Process
    {
        Process(const ScreenCommand &command, std::pair<int, int> ends);
        protocol::Asker channel;
        ScreenProcess process;
        Time start = std::chrono::steady_clock::now();
    };

    void Run();
    void AskForTokens();
    void Wait();
    bool StartProcess();
    void EndProcess();
    protocol::Limit PauseLeft();

    const std::string m_path;
    const TokenOptions m_options;
    const Asked m_asked;
    const Descriptor m_wake;
    std::mutex m_turn;
    std::mutex m_life; // held while the process begins and ends, and within m_turn
    std::optional<Process> m_process;
    int m_failures = 0; // in a row
    Time m_notBefore;
    bool m_hung = false;    // the last process that has ended
    bool m_givenUp = false; // it cannot be started as it is
    std::atomic<bool> m_stop = false;
    std::thread m_thread; // the last member: it uses the others
};

} // namespace host
