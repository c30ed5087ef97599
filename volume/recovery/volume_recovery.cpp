// SPDX-License-Identifier: Apache-2.0
#include "volume/recovery/volume_recovery.h"

#include <algorithm>

namespace recovery {
namespace {

using volume::Error;
using volume::Header;

// With only those of their keyslots that open the volume.
std::vector<Found> FindAll(const Header &header)
{
    std::vector<Found> all;
    const std::optional<Bytes<16>> uuid = ParseUuid(header.Uuid());
    for (const volume::Object &object : header.Objects(kObjectType)) {
        auto enrolment = uuid ? DecodeEnrolment(object.json, *uuid) : std::nullopt;
        if (!enrolment)
            continue;
        enrolment->keyslots = header.UsableKeyslots(enrolment->keyslots);
        all.push_back({std::move(*enrolment), object.number});
    }
    return all;
}

Error Write(Header &header, const Enrolment &enrolment, int *object)
{
    return header.WriteObject(EncodeEnrolment(enrolment), object);
}

Error UndoPending(Header &header, Found found)
{
    const int pending = *found.enrolment.pending;
    if (header.IsAnnounced(pending, volume::KeyCost::ForRandomSecret().ToText())) {
        if (const Error error = header.RemoveKeyslot(pending); error != Error::None)
            return error;
    }
    if (found.enrolment.keyslots.empty())
        return header.RemoveObject(found.object);
    found.enrolment.pending.reset();
    return Write(header, found.enrolment, &found.object);
}

std::vector<int> FormerKeyslots(const Header &header, const Found &found)
{
    return header.FormerKeyslots(found.enrolment.keyslots, found.object);
}

Error RemoveFormer(Header &header, const Found &found)
{
    for (int keyslot : FormerKeyslots(header, found)) {
        if (const Error error = header.RemoveKeyslot(keyslot); error != Error::None)
            return error;
    }
    return Error::None;
}

bool IsUnfinished(const Header &header, const Found &found)
{
    return found.enrolment.pending || !FormerKeyslots(header, found).empty();
}

Error Finish(Header &header, const Found &found)
{
    return found.enrolment.pending ? UndoPending(header, found) : RemoveFormer(header, found);
}

// One way to a secret that is kept: the keyslot, the record, the object, each known to be there before the
// next is written.
class SetUpRun final : public volume::KeyslotOwner
{
public:
    SetUpRun(Header &header, const Identity &identity, const PublicKey &administrator, const Keep &keep)
        : m_header(header)
        , m_former(Find(header))
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
        Error error = m_former ? Error::None : m_header.CheckRoom({1, 1, bytes});
        if (error == Error::None)
            error = m_header.AddKeyslot(volumeKey, PassphraseOf(m_secret), volume::KeyCost::ForRandomSecret(),
                                        *this);
        if (error != Error::None)
            return error;
        return RemoveFormer(m_header, {m_fresh, m_object}) == Error::None ? Error::None
                                                                          : Error::OldPasswordStays;
    }

    Error Announce(int keyslot, const volume::KeyCost &) override
    {
        Enrolment announced = m_former ? m_former->enrolment : m_fresh;
        announced.pending = keyslot;
        return Write(m_header, announced, &m_object);
    }

    Error Accept(int keyslot) override
    {
        m_keep(m_fresh.identity, m_secret);
        Enrolment accepted = m_fresh;
        accepted.keyslots = {keyslot};
        if (m_former)
            accepted.keyslots.insert(accepted.keyslots.end(), m_former->enrolment.keyslots.begin(),
                                     m_former->enrolment.keyslots.end());
        const Error error = Write(m_header, accepted, &m_object);
        if (error == Error::None)
            m_fresh = accepted;
        return error;
    }

    Error Withdraw() override
    {
        return m_former ? Write(m_header, m_former->enrolment, &m_object) : m_header.RemoveObject(m_object);
    }

private:
    Header &m_header;
    std::optional<Found> m_former;
    Enrolment m_fresh;
    const Keep &m_keep;
    RecoverySecret m_secret;
    int m_object;
};

} // namespace

std::optional<Found> Find(const Header &header)
{
    for (Found &found : FindAll(header)) {
        if (!found.enrolment.keyslots.empty())
            return std::move(found);
    }
    return std::nullopt;
}

Error SetUp(Header &header, const base::Secret &volumeKey, const PublicKey &administrator, const Keep &keep)
{
    const std::optional<Bytes<16>> uuid = ParseUuid(header.Uuid());
    if (!uuid)
        return Error::Failed;
    Identity identity{*uuid, {}, {}};
    Randomise(identity.record);
    Randomise(identity.binding);
    return header.Change([&] {
        const Error error = FinishPending(header);
        return error == Error::None ? SetUpRun(header, identity, administrator, keep).Run(volumeKey) : error;
    });
}

Error MarkUsed(Header &header, const Identity &identity)
{
    return header.Change([&] {
        for (Found &found : FindAll(header)) {
            if (found.enrolment.identity != identity)
                continue;
            found.enrolment.used = true;
            return Write(header, found.enrolment, &found.object);
        }
        return Error::None;
    });
}

Error FinishPending(Header &header)
{
    const auto unfinished = [&] {
        std::vector<Found> all = FindAll(header);
        std::erase_if(all, [&](const Found &found) { return !IsUnfinished(header, found); });
        return all;
    };
    if (unfinished().empty())
        return Error::None;
    return header.Change([&] {
        for (const Found &found : unfinished()) {
            if (const Error error = Finish(header, found); error != Error::None)
                return error;
        }
        return Error::None;
    });
}

} // namespace recovery
