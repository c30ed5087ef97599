// SPDX-License-Identifier: Apache-2.0
// The service, as the answers to the view ask it. While it works nothing else runs here, so that no answer is
// called within another one.
#pragma once

#include <optional>

#include "host/protocol/client.h"

namespace host {

class ServiceLink
{
public:
    // It must outlive this object.
    explicit ServiceLink(protocol::Client &client)
        : m_client(client)
    {
    }
    ~ServiceLink() { StopListening(); }
    ServiceLink(const ServiceLink &) = delete;
    ServiceLink &operator=(const ServiceLink &) = delete;

    // From now on what comes while nothing is asked is taken as soon as an event loop runs.
    void Listen();
    // Nothing when the question cannot be put, since a text in it is longer than any that leads to an answer;
    // and nothing when the program ends: see HasEnded.
    template <typename Request>
    std::optional<typename Request::Reply> Ask(const Request &request)
    {
        auto reply = m_client.Ask(request);
        PassOnNews();
        return reply;
    }
    // The same for what may take as long as the derivation of a key: the wait cursor stands meanwhile.
    template <typename Request>
    std::optional<typename Request::Reply> AskBusy(const Request &request)
    {
        const Busy busy;
        return Ask(request);
    }
    // Whoever ended the program does not want the system to start, nor to be told anything.
    bool HasEnded() const { return m_client.StopRequested() || !m_client.IsOpen(); }

    void TakeEvents();
    // The newest list; of generation 0 and empty before the first.
    const protocol::Tokens &NewestTokens() const { return m_tokens; }

private:
    struct Busy
    {
        Busy();
        ~Busy();
        Busy(const Busy &) = delete;
        Busy &operator=(const Busy &) = delete;
    };

    // The view learns that tokens came or went, and that the program ends.
    void PassOnNews();
    void StopListening();

    protocol::Client &m_client;
    int m_watched = -1;
    protocol::Tokens m_tokens;
};

} // namespace host
