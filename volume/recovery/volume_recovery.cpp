// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/volume_recovery.h"

#include <algorithm>

namespace recovery {
namespace {

using volume::Error;
using volume::Volume;

// With only those of their keyslots that open the volume.
std::vector<Found> FindAll(const Volume &volume)
{
    std::vector<Found> all;
    const std::optional<Bytes<16>> uuid = ParseUuid(volume.Uuid());
    for (const volume::Object &object : volume.Objects(kObjectType)) {
        auto enrolment = uuid ? DecodeEnrolment(object.json, *uuid) : std::nullopt;
        if (!enrolment)
            continue;
        enrolment->keyslots = volume.UsableKeyslots(enrolment->keyslots);
        all.push_back({std::move(*enrolment), object.number});
    }
    return all;
}

Error Write(Volume &volume, const Enrolment &enrolment, int *object)
{
    return volume.WriteObject(EncodeEnrolment(enrolment), object);
}

Error UndoPending(Volume &volume, Found found)
{
    const int pending = *found.enrolment.pending;
    if (volume.IsAnnounced(pending, volume::KeyCost::ForRandomSecret().ToText())) {
        if (const Error error = volume.RemoveKeyslot(pending); error != Error::None)
            return error;
    }
    if (found.enrolment.keyslots.empty())
        return volume.RemoveObject(found.object);
    found.enrolment.pending.reset();
    return Write(volume, found.enrolment, &found.object);
}

std::vector<int> FormerKeyslots(const Volume &volume, const Found &found)
{
    return volume.FormerKeyslots(found.enrolment.keyslots, found.object);
}

Error RemoveFormer(Volume &volume, const Found &found)
{
    for (int keyslot : FormerKeyslots(volume, found)) {
        if (const Error error = volume.RemoveKeyslot(keyslot); error != Error::None)
            return error;
    }
    return Error::None;
}

bool IsUnfinished(const Volume &volume, const Found &found)
{
    return found.enrolment.pending || !FormerKeyslots(volume, found).empty();
}

Error Finish(Volume &volume, const Found &found)
{
    return found.enrolment.pending ? UndoPending(volume, found) : RemoveFormer(volume, found);
}

// One way to a secret that is kept: the keyslot, the record, the object, each known to be there before the
// next is written.
class SetUpRun final : public volume::KeyslotOwner
{
public:
    SetUpRun(Volume &volume, const Identity &identity, const PublicKey &administrator, const Keep &keep)
        : m_volume(volume)
        , m_former(Find(volume))
        , m_fresh{identity, administrator, {}, false, {}}
        , m_keep(keep)
        , m_object(m_former ? m_former->object : -1)
    {
        Randomise({m_secret.Data(), m_secret.View().size()});
    }

    Error Run(const base::Secret &volumeKey)
    {
        // A renewal needs its keyslot for a moment only.
        const std::size_t bytes = EncodeEnrolment(m_fresh).size() + volume::kKeyslotBytes;
        Error error = m_former ? Error::None : m_volume.CheckRoom({1, 1, bytes});
        if (error == Error::None)
            error = m_volume.AddKeyslot(volumeKey, PassphraseOf(m_secret), volume::KeyCost::ForRandomSecret(),
                                        *this);
        if (error != Error::None)
            return error;
        return RemoveFormer(m_volume, {m_fresh, m_object}) == Error::None ? Error::None
                                                                          : Error::OldPasswordStays;
    }

    Error Announce(int keyslot, const volume::KeyCost &) override
    {
        Enrolment announced = m_former ? m_former->enrolment : m_fresh;
        announced.pending = keyslot;
        return Write(m_volume, announced, &m_object);
    }

    Error Accept(int keyslot) override
    {
        m_keep(m_fresh.identity, m_secret);
        Enrolment accepted = m_fresh;
        accepted.keyslots = {keyslot};
        if (m_former)
            accepted.keyslots.insert(accepted.keyslots.end(), m_former->enrolment.keyslots.begin(),
                                     m_former->enrolment.keyslots.end());
        const Error error = Write(m_volume, accepted, &m_object);
        if (error == Error::None)
            m_fresh = accepted;
        return error;
    }

    Error Withdraw() override
    {
        return m_former ? Write(m_volume, m_former->enrolment, &m_object) : m_volume.RemoveObject(m_object);
    }

private:
    Volume &m_volume;
    std::optional<Found> m_former;
    Enrolment m_fresh;
    const Keep &m_keep;
    RecoverySecret m_secret;
    int m_object;
};

} // namespace

std::optional<Found> Find(const Volume &volume)
{
    for (Found &found : FindAll(volume)) {
        if (!found.enrolment.keyslots.empty())
            return std::move(found);
    }
    return std::nullopt;
}

Error SetUp(Volume &volume, const base::Secret &volumeKey, const PublicKey &administrator, const Keep &keep)
{
    const std::optional<Bytes<16>> uuid = ParseUuid(volume.Uuid());
    if (!uuid)
        return Error::Failed;
    Identity identity{*uuid, {}, {}};
    Randomise(identity.record);
    Randomise(identity.binding);
    return volume.Change([&] {
        const Error error = FinishPending(volume);
        return error == Error::None ? SetUpRun(volume, identity, administrator, keep).Run(volumeKey) : error;
    });
}

Error MarkUsed(Volume &volume, const Identity &identity)
{
    return volume.Change([&] {
        for (Found &found : FindAll(volume)) {
            if (found.enrolment.identity != identity)
                continue;
            found.enrolment.used = true;
            return Write(volume, found.enrolment, &found.object);
        }
        return Error::None;
    });
}

Error FinishPending(Volume &volume)
{
    const auto unfinished = [&] {
        std::vector<Found> all = FindAll(volume);
        std::erase_if(all, [&](const Found &found) { return !IsUnfinished(volume, found); });
        return all;
    };
    if (unfinished().empty())
        return Error::None;
    return volume.Change([&] {
        for (const Found &found : unfinished()) {
            if (const Error error = Finish(volume, found); error != Error::None)
                return error;
        }
        return Error::None;
    });
}

} // namespace recovery
