// SPDX-License-Identifier: Apache-2.0
#include "host/screen/service_link.h"

#include "pbe/application.h"

namespace host {

ServiceLink::Busy::Busy()
{
    PbeSetBusy(true);
}

ServiceLink::Busy::~Busy()
{
    PbeSetBusy(false);
}

void ServiceLink::Listen()
{
    m_watched = m_client.Descriptor();
    PbeWatch(
        m_watched, [](void *link) { static_cast<ServiceLink *>(link)->TakeEvents(); }, this);
}

void ServiceLink::StopListening()
{
    if (m_watched >= 0)
        PbeWatch(std::exchange(m_watched, -1), nullptr, nullptr);
}

void ServiceLink::TakeEvents()
{
    m_client.TakeEvents();
    PassOnNews();
}

void ServiceLink::PassOnNews()
{
    if (std::optional<protocol::Tokens> newer = m_client.TakeTokens()) {
        const std::size_t before = std::exchange(m_tokens, std::move(*newer)).tokens.size();
        PbeTellTokens(!m_tokens.tokens.empty() && m_tokens.tokens.size() >= before);
    }
    if (!HasEnded())
        return;
    StopListening();
    PbeRequestStop();
}

} // namespace host
