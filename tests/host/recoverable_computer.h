// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/host/scratch_volume.h"
#include "volume/recovery/challenge.h"
#include "volume/recovery/response.h"
#include "volume/recovery/volume_recovery.h"

// A computer with its recovery, as the help desk knows it.
struct Computer
{
    explicit Computer(bool withRecovery)
    {
        const auto opened = scratch.Open();
        base::Secret key;
        const auto keep = [this](const recovery::Identity &kept, const recovery::RecoverySecret &its) {
            identity = kept;
            std::copy(its.View().begin(), its.View().end(), secret.Data());
        };
        if (withRecovery &&
            (opened->Authorise(MakeSecret(ScratchVolume::kPassword), &key) != volume::Error::None ||
             recovery::SetUp(*opened, key, recovery::PublicKeyOf(administrator), keep) !=
                 volume::Error::None))
            qFatal("no recovery");
    }

    // What the administrator reads out.
    recovery::ResponseLines Respond(const recovery::ChallengeStrings &strings,
                                    const volume::UserName &name) const
    {
        const auto challenge = recovery::DecodeChallenge(strings);
        if (!challenge || !BelongsTo(*challenge, identity))
            qFatal("no challenge of this computer");
        auto response = recovery::MakeResponse(administrator, identity, challenge->ephemeral, secret, name);
        return std::move(*response);
    }

    ScratchVolume scratch;
    recovery::SecretKey administrator = recovery::MakeEphemeral({});
    recovery::Identity identity;
    recovery::RecoverySecret secret;
};
