#include "volume/recovery/volume_recovery.h"

#include <algorithm>

namespace recovery {
namespace {

using volume::Error;
using volume::Volume;

std::vector<Found> FindAll(const Volume &volume)
{
    std::vector<Found> all;
    const std::optional<Bytes<16>> uuid = ParseUuid(volume.Uuid());
    for (const volume::Object &object : volume.Objects(kObjectType)) {
        auto enrolment = uuid ? DecodeEnrolment(object.json, *uuid) : std::nullopt;
        if (enrolment)
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
    if (volume.IsAnnounced(pending, found.object)) {
        if (const Error error = volume.RemoveKeyslot(pending); error != Error::None)
            return error;
    }
    if (found.enrolment.keyslots.empty())
        return volume.RemoveObject(found.object);
    found.enrolment.pending.reset();
    return Write(volume, found.enrolment, &found.object);
}

// All but the first.
std::vector<int> FormerKeyslots(const Volume &volume, const std::vector<int> &keyslots, int object)
{
    std::vector<int> former(keyslots.begin() + !keyslots.empty(), keyslots.end());
    std::erase_if(former, [&](int keyslot) { return !volume.IsAnnounced(keyslot, object); });
    return former;
}

Error RemoveFormer(Volume &volume, const std::vector<int> &keyslots, int object)
{
    for (int keyslot : FormerKeyslots(volume, keyslots, object)) {
        if (const Error error = volume.RemoveKeyslot(keyslot); error != Error::None)
            return error;
    }
    return Error::None;
}

bool IsUnfinished(const Volume &volume, const Found &found)
{
    return found.enrolment.pending || !FormerKeyslots(volume, found.enrolment.keyslots, found.object).empty();
}

Error Finish(Volume &volume, const Found &found)
{
    return found.enrolment.pending ? UndoPending(volume, found)
                                   : RemoveFormer(volume, found.enrolment.keyslots, found.object);
}

// One way to a secret that is kept: the keyslot, the record, the object, each known to be there before the
// next is written.
class SetUpRun
{
public:
    SetUpRun(Volume &volume, const Identity &identity, const PublicKey &administrator)
        : m_volume(volume)
        , m_former(Find(volume))
        , m_fresh{identity, administrator, {}, false, {}}
        , m_object(m_former ? m_former->object : -1)
    {
    }

    Error Run(const volume::Secret &volumeKey, const Keep &keep)
    {
        RecoverySecret secret;
        Randomise({secret.Data(), secret.View().size()});
        Error error = Announce();
        if (error != Error::None)
            return error;
        try {
            error = AddKeyslot(volumeKey, secret);
            if (error == Error::None) {
                keep(m_fresh.identity, secret);
                error = Accept();
            }
        } catch (...) {
            Undo();
            throw;
        }
        if (error != Error::None)
            Undo();
        return error == Error::None && RemoveFormer(m_volume, m_fresh.keyslots, m_object) != Error::None
                   ? Error::OldPasswordStays
                   : error;
    }

private:
    // Says which keyslot is about to be added, so that it can be found should the power go.
    Error Announce()
    {
        Enrolment announced = m_former ? m_former->enrolment : m_fresh;
        const int next = m_volume.FindFreeKeyslot();
        if (next < 0)
            return Error::NoSpace;
        announced.pending = next;
        const std::size_t bytes = EncodeEnrolment(announced).size() + volume::kKeyslotBytes;
        // A renewal needs its keyslot for a moment only.
        const Error error = m_former ? Error::None : m_volume.CheckRoom({1, 1, bytes});
        return error == Error::None ? Write(m_volume, announced, &m_object) : error;
    }

    Error AddKeyslot(const volume::Secret &volumeKey, const RecoverySecret &secret)
    {
        int keyslot = -1;
        const Error error = m_volume.AddKeyslot(volumeKey, PassphraseOf(secret),
                                                volume::KeyCost::ForRandomSecret(), &keyslot);
        if (error == Error::None)
            m_fresh.keyslots = {keyslot};
        return error;
    }

    Error Accept()
    {
        Enrolment accepted = m_fresh;
        if (m_former)
            accepted.keyslots.insert(accepted.keyslots.end(), m_former->enrolment.keyslots.begin(),
                                     m_former->enrolment.keyslots.end());
        const Error error = Write(m_volume, accepted, &m_object);
        if (error == Error::None)
            m_fresh = accepted;
        return error;
    }

    // What fails here as well, FinishPending does later.
    void Undo()
    {
        for (int keyslot : m_fresh.keyslots) {
            if (m_volume.RemoveKeyslot(keyslot) != Error::None)
                return;
        }
        [[maybe_unused]] const Error error =
            m_former ? Write(m_volume, m_former->enrolment, &m_object) : m_volume.RemoveObject(m_object);
    }

    Volume &m_volume;
    std::optional<Found> m_former;
    Enrolment m_fresh;
    int m_object;
};

} // namespace

std::optional<Found> Find(const Volume &volume)
{
    const std::vector<volume::Keyslot> keyslots = volume.Keyslots();
    for (Found &found : FindAll(volume)) {
        const bool usable =
            !found.enrolment.keyslots.empty() &&
            std::any_of(keyslots.begin(), keyslots.end(), [&](const volume::Keyslot &keyslot) {
                return keyslot.number == found.enrolment.keyslots.front() && keyslot.opensVolume;
            });
        if (usable)
            return std::move(found);
    }
    return std::nullopt;
}

Error SetUp(Volume &volume, const volume::Secret &volumeKey, const PublicKey &administrator, const Keep &keep)
{
    const std::optional<Bytes<16>> uuid = ParseUuid(volume.Uuid());
    if (!uuid)
        return Error::Failed;
    Identity identity{*uuid, {}, {}};
    Randomise(identity.record);
    Randomise(identity.binding);
    return volume.Change([&] {
        const Error error = FinishPending(volume);
        return error == Error::None ? SetUpRun(volume, identity, administrator).Run(volumeKey, keep) : error;
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
