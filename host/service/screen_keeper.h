// SPDX-License-Identifier: Apache-2.0
// Starts the screen, answers what it asks, and starts another one in its place when it ends before its time.
//
// This thread only waits: for the screen's questions and its end, and for signals. What a question takes runs
// in another one, one question at a time, so that the screen's end and a signal are noticed at once. The
// volume is never touched by two threads.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "host/protocol/server.h"
#include "host/service/descriptor.h"
#include "host/service/screen_process.h"
#include "host/service/service.h"
#include "host/service/terminals.h"
#include "host/service/worker.h"

namespace host {

// There is no screen any more, before a login.
struct GivenUp
{
    int exitCode;
    std::string why; // empty where the screen itself has said it
};

class ScreenKeeper
{
public:
    // `signals` is that of TakeStopSignals. Where the first of the `screens`, of which there is one at least,
    // cannot stand, the next one does. The terminals must outlive this object. Throws std::system_error.
    ScreenKeeper(const Terminals &terminals, int signals, std::vector<ScreenCommand> screens);
    ~ScreenKeeper() { Dismiss(); }
    ScreenKeeper(const ScreenKeeper &) = delete;
    ScreenKeeper &operator=(const ScreenKeeper &) = delete;

    // What comes before the first answer, while the first screen is starting. Throws what `work` throws.
    template <typename Work>
    void Prepare(Work work)
    {
        m_worker.Begin(std::move(work));
        StartScreen();
        while (m_worker.IsBusy())
            Step();
    }
    // Then: until the system starts, a signal comes, or there is no screen any more. A second signal ends the
    // program at once.
    void Run(Service &service);
    // Ends the screen at once, and puts the terminals right.
    void Dismiss();

    bool IsStopped() const { return m_stopped; }
    const std::optional<GivenUp> &WhyGivenUp() const { return m_givenUp; }

private:
    struct Screen
    {
        Screen(const ScreenCommand &command, std::pair<int, int> ends);
        protocol::Server server;
        ScreenProcess process;
        std::uint32_t listTold = 0; // of tokens
    };

    bool IsListening() const { return m_service && m_screen && !m_outdated; }
    void StartScreen();
    void Step();
    void Listen();
    void TellTokens();
    void FinishWork();
    void FinishAnswer();
    void OnScreenEnd();
    void Replace(const ScreenEnd &end);
    void OnSignal();
    bool MayRestart();
    // It ends by itself when it finds the connection closed; else it is made to.
    void EndScreen();

    const Terminals &m_terminals;
    int m_signals;
    std::vector<ScreenCommand> m_screens; // the one that stands, and those that may take its place
    Service *m_service = nullptr;         // from the first answer on
    std::optional<Screen> m_screen;
    std::optional<protocol::Deadline> m_screenEnds;
    std::optional<protocol::AnyReply> m_reply; // of the worker
    Worker m_worker;
    bool m_outdated = false; // what is being answered was asked by a screen that is gone
    bool m_finished = false;
    bool m_stopped = false;
    std::optional<GivenUp> m_givenUp;
    std::vector<std::chrono::steady_clock::time_point> m_restarts; // within the last minute
};

} // namespace host
