// SPDX-License-Identifier: Apache-2.0
// A host around a scratch volume, with a view that records.
#pragma once

#include "host/screen/business_logic.h"
#include "tests/support/fake_pbe.h"
#include "tests/host/scratch_volume.h"
#include "tests/host/silent_view.h"
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

// Members in the order in which they depend on each other.
template <typename View>
struct HostOnVolume
{
    explicit HostOnVolume(const ScratchVolume &scratch, host::UnlockOptions start = {},
                          host::LogicOptions options = {}, Memory *lasting = nullptr)
        : opened(scratch.Open())
        , memory(lasting ? *lasting : ownMemory)
        , clock([this] { return memory.date; }, [this] { return memory.sinceBoot; })
        , throttle(memory, clock, [this] { return volume::PolicyOf(*opened); })
        , unlockSession(*opened, clock, std::move(start))
        , logic(unlockSession, throttle, texts, options)
    {
        fake_pbe::Reset();
        if (logic.Init(&view) != kro::kOk)
            qFatal("Init fails");
        view.TakeCalls();
    }

    std::unique_ptr<volume::Header> opened;
    Memory ownMemory;
    Memory &memory;
    host::Clock clock;
    host::LoginThrottle throttle;
    host::Texts texts{nullptr};
    host::UnlockSession unlockSession;
    View view;
    host::BusinessLogic logic;
};
