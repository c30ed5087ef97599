// SPDX-License-Identifier: Apache-2.0
// The screen of a console or a serial line: it asks line by line, and the service decides, as it does for the
// other screen.
#pragma once

#include "host/protocol/client.h"
#include "host/screen/catalogue.h"
#include "host/screen/texts.h"
#include "host/text/terminal.h"

namespace text {

class TextScreen
{
public:
    // All three must outlive this object.
    TextScreen(protocol::Client &client, const Terminal &terminal, const host::Catalogue &catalogue);

    // Until the system starts: then true. False when the service or the terminal has ended before.
    bool Run();

private:
    // What a step leads to.
    enum class Next { Login, NewPassword, Start, End };

    Next LogIn();
    Next TryPassword(std::string domain, std::string user, base::Secret password);
    Next AfterLogin(const protocol::TryPasswordReply &reply);
    Next ReplacePassword();
    Next AfterReplacing(const protocol::ReplacePasswordReply &reply);
    Next Recover();
    Next ShowChallenge(std::size_t entropyBytes);
    Next AskResponse();
    Next AfterResponse(const protocol::RecoveryFinishReply &reply);
    Next Start();
    Next Forget();

    // A question that takes its time.
    template <typename Request>
    auto AskService(const Request &request);
    std::optional<base::Secret> AskCodeLine(std::size_t row);
    void Say(const host::MessageText &message)
    {
        SayLine(m_catalogue.Get(message.title) + "\n" + m_catalogue.Get(message.text));
    }
    void SayLine(const std::string &line) { m_terminal.Say(line + "\n"); }

    protocol::Client &m_client;
    const Terminal &m_terminal;
    const host::Catalogue &m_catalogue;
    bool m_started = false;
};

} // namespace text
