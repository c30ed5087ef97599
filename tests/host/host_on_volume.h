// SPDX-License-Identifier: Apache-2.0
// A host around a scratch volume, with a view that records.
#pragma once

#include "host/protocol/server.h"
#include "host/screen/business_logic.h"
#include "host/service/service.h"
#include "tests/host/scratch_volume.h"
#include "tests/host/silent_view.h"
#include "tests/support/fake_pbe.h"
#include "tests/support/memory_channel.h"
#include "volume/luks/policy.h"

// What outlives a host: the memory of failed logins, which may be read-only, and the time.
class Memory final : public host::StateStore
{
public:
    host::LoginState state;
    bool writable = true;
    std::int64_t date = 1'700'000'000; // of the computer's clock
    std::int64_t sinceBoot = 1000;
    std::function<void()> atWriting = [] {};

    host::LoginState Read() override { return state; }
    bool Update(const Change &change, std::chrono::milliseconds) override
    {
        const std::optional<host::LoginState> changed = change(state);
        if (!changed)
            return true;
        if (writable)
            state = *changed;
        atWriting();
        return writable;
    }
    bool KeepsLastLogin() const override { return true; }
};

// A service on a scratch volume, and a screen's end of the wire to it. Members in the order in which they
// depend on each other.
struct ServiceOnVolume
{
    explicit ServiceOnVolume(const ScratchVolume &scratch, host::UnlockOptions start = {},
                             Memory *lasting = nullptr, host::TokenOptions tokens = {})
        : opened(scratch.Open())
        , memory(lasting ? *lasting : ownMemory)
        , clock([this] { return memory.date; }, [this] { return memory.sinceBoot; })
        , throttle(memory, clock, [this] { return volume::PolicyOf(*opened); })
        , unlockSession(*opened, clock, std::move(start))
        , service(unlockSession, throttle, true, std::move(tokens))
    {
        fake_pbe::Reset();
        auto [ours, theirs] = MemoryChannel::MakePair();
        theirs->others = [this] { Serve(); };
        server.emplace(std::move(ours));
        client.emplace(std::move(theirs));
    }
    void Serve()
    {
        while (const auto request = server->Receive())
            std::visit([this](const auto &reply) { server->Reply(reply); }, service.Answer(*request));
    }

    std::unique_ptr<volume::Header> opened;
    Memory ownMemory;
    Memory &memory;
    host::Clock clock;
    host::LoginThrottle throttle;
    host::UnlockSession unlockSession;
    host::Service service;
    std::optional<protocol::Server> server;
    std::optional<protocol::Client> client;
};

// And the answers to a view that records.
template <typename View>
struct HostOnVolume : ServiceOnVolume
{
    explicit HostOnVolume(const ScratchVolume &scratch, host::UnlockOptions start = {},
                          Memory *lasting = nullptr)
        : ServiceOnVolume(scratch, std::move(start), lasting)
    {
        if (logic.Init(&view) != kro::kOk)
            qFatal("Init fails");
        view.TakeCalls();
    }

    host::Texts texts{nullptr};
    View view;
    host::ServiceLink link{*client};
    host::BusinessLogic logic{link, texts};
};
