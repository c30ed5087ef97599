// SPDX-License-Identifier: Apache-2.0
// Starts the screen, answers what it asks, and starts another one in its place when it ends before its time.
//
// This thread only waits: for the screen's questions and its end, and for signals. What a question takes runs
// in another one, one question at a time, so that the screen's end and a signal are noticed at once. The
// volume is never touched by two threads.
#pragma once

#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include "host/protocol/server.h"
#include "host/service/descriptor.h"
#include "host/service/screen_process.h"
#include "host/service/service.h"
#include "host/service/terminal_settings.h"

namespace host {

class ScreenKeeper
{
public:
    // `service` and `terminal` must outlive this object. Stop signals are this object's from here on. Throws
    // std::system_error.
    ScreenKeeper(Service &service, const TerminalSettings &terminal, ScreenCommand command);

    // Until the system starts, a signal comes, or the screen has ended too often. A second signal ends the
    // program at once.
    void Run();
    bool IsStopped() const { return m_stopped; }
    // How the last screen ended, unless it did because all was done.
    const std::string &WhyGivenUp() const { return m_whyGivenUp; }

private:
    struct Screen
    {
        Screen(const ScreenCommand &command, std::pair<int, int> ends);
        protocol::Server server;
        ScreenProcess process;
    };

    bool IsOver() const { return m_finished || m_stopped || !m_whyGivenUp.empty(); }
    bool IsAnswering() const { return m_reply.valid(); }
    void StartScreen();
    void Step();
    void Listen();
    void FinishAnswer();
    void OnScreenEnd();
    void OnSignal();
    bool MayRestart();
    // It ends by itself when it finds the connection closed; else it is made to.
    void EndScreen();

    Service &m_service;
    const TerminalSettings &m_terminal;
    ScreenCommand m_command;
    Descriptor m_signals;
    Descriptor m_answered; // readable when the reply is there
    std::optional<Screen> m_screen;
    std::optional<protocol::Deadline> m_screenEnds;
    std::future<protocol::AnyReply> m_reply;
    bool m_outdated = false; // what is being answered was asked by a screen that is gone
    bool m_finished = false;
    bool m_stopped = false;
    std::string m_whyGivenUp;
    std::vector<std::chrono::steady_clock::time_point> m_restarts; // within the last minute
};

} // namespace host
