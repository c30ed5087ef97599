// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/header.h"

#include <algorithm>

#include <libcryptsetup.h>

#include "volume/luks/user.h"

namespace volume {
namespace {

// Answers the opened keyslot or a negative errno value.
int OpenVolumeKey(crypt_device *device, int keyslot, const base::Secret &passphrase, base::Secret *volumeKey)
{
    const int room = crypt_get_volume_key_size(device);
    base::Secret key(room > 0 ? static_cast<std::size_t>(room) : 0);
    std::size_t size = key.Capacity();
    const int result =
        crypt_volume_key_get(device, keyslot, key.Buffer(), &size, passphrase.Data(), passphrase.Size());
    if (result < 0)
        return result;
    key.SetSize(size);
    *volumeKey = std::move(key);
    return result;
}

bool Names(const Object &object, int keyslot)
{
    return std::count(object.keyslots.begin(), object.keyslots.end(), keyslot) > 0;
}

} // namespace

// By an object other than the one of the number `besides`.
bool Header::IsNamed(int keyslot, int besides) const
{
    const std::vector<Object> objects = Objects();
    return std::any_of(objects.begin(), objects.end(), [&](const Object &object) {
        return object.number != besides && Names(object, keyslot);
    });
}

bool Header::IsAnnounced(int keyslot, const std::string &cost) const
{
    KeyCost its;
    return OpensVolume(m_device, keyslot) && !IsNamed(keyslot) &&
           KeyCost::OfKeyslot(m_device, keyslot, &its) && its.ToText() == cost;
}

std::vector<int> Header::OwnKeyslots(const std::vector<int> &keyslots, int object) const
{
    std::vector<int> own = UsableKeyslots(keyslots);
    std::erase_if(own, [&](int keyslot) { return IsNamed(keyslot, object); });
    return own;
}

// Where the first is another's as well, nothing says what the others are.
std::vector<int> Header::FormerKeyslots(const std::vector<int> &keyslots, int object) const
{
    std::vector<int> former = OwnKeyslots(keyslots, object);
    if (former.empty() || former.front() != UsableKeyslots(keyslots).front())
        return {};
    former.erase(former.begin());
    return former;
}

std::vector<int> Header::UsableKeyslots(const std::vector<int> &keyslots) const
{
    std::vector<int> usable = keyslots;
    std::erase_if(usable, [this](int keyslot) { return !OpensVolume(m_device, keyslot); });
    return usable;
}

std::vector<Keyslot> Header::Keyslots() const
{
    std::vector<Keyslot> keyslots;
    for (int number = 0; number < kMaxKeyslots; ++number) {
        KeyCost cost;
        if (KeyCost::OfKeyslot(m_device, number, &cost))
            keyslots.push_back({number, OpensVolume(m_device, number), cost});
    }
    return keyslots;
}

int Header::FindFreeKeyslot() const
{
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
        if (crypt_keyslot_status(m_device, keyslot) == CRYPT_SLOT_INACTIVE)
            return keyslot;
    }
    return -1;
}

// A keyslot of a recovery or of a token is behind a secret that no person has in mind.
bool Header::IsWayIn(int keyslot) const
{
    const std::vector<Object> objects = Objects();
    return OpensVolume(m_device, keyslot) &&
           std::none_of(objects.begin(), objects.end(), [&](const Object &object) {
               return object.type != kUserObjectType && Names(object, keyslot);
           });
}

bool Header::LeavesWayIn(const std::vector<int> &withoutKeyslots) const
{
    for (int keyslot = 0; keyslot < kMaxKeyslots; ++keyslot) {
        if (std::count(withoutKeyslots.begin(), withoutKeyslots.end(), keyslot) == 0 && IsWayIn(keyslot))
            return true;
    }
    return false;
}

Error Header::OpenKeyslot(int keyslot, const base::Secret &passphrase, base::Secret *volumeKey)
{
    KeyCost cost;
    if (!OpensVolume(m_device, keyslot))
        return Error::WrongPassword;
    if (KeyCost::OfKeyslot(m_device, keyslot, &cost) && cost.ExceedsMemory())
        return Error::OutOfMemory;
    ++m_derivations;
    base::Secret discarded;
    const int result = OpenVolumeKey(m_device, keyslot, passphrase, volumeKey ? volumeKey : &discarded);
    return result < 0 ? Fault(result) : Error::None;
}

Error Header::Authorise(const base::Secret &passphrase, base::Secret *volumeKey,
                        const std::vector<int> &except)
{
    Error answer = Error::WrongPassword;
    for (const Keyslot &keyslot : Keyslots()) {
        if (std::count(except.begin(), except.end(), keyslot.number) > 0)
            continue;
        const Error error = OpenKeyslot(keyslot.number, passphrase, volumeKey);
        if (error == Error::None)
            return error;
        if (error != Error::WrongPassword)
            answer = error;
    }
    return answer;
}

// As the next start will see it.
Error Header::ProveKeyslot(int keyslot, const base::Secret &passphrase) const
{
    std::unique_ptr<Header> fresh;
    Error error = Open(m_path, &fresh);
    if (error == Error::None)
        error = fresh->OpenKeyslot(keyslot, passphrase, nullptr);
    return error == Error::WrongPassword ? Error::NotProven : error;
}

Error Header::DestroyKeyslots(const std::vector<int> &keyslots)
{
    if (keyslots.empty())
        return Error::None;
    return Change([&] {
        for (int keyslot : keyslots) {
            if (const Error error = m_writer.lock()->DestroyKeyslot(keyslot); error != Error::None)
                return error;
        }
        return Error::None;
    });
}

Error Header::AddKeyslot(const base::Secret &volumeKey, const base::Secret &passphrase, KeyCost cost,
                         KeyslotOwner &owner)
{
    return Change([&] {
        const int keyslot = FindFreeKeyslot();
        if (keyslot < 0)
            return Error::NoSpace;
        if (const int result = cost.Measure(m_device); result < 0)
            return Fault(result);
        Error error = owner.Announce(keyslot, cost);
        if (error != Error::None)
            return Change([&] { return owner.Withdraw(); }) == Error::None ? error : Error::NotUndone;
        try {
            error = m_writer.lock()->AddKeyslot(keyslot, volumeKey, passphrase, cost);
            if (error == Error::None)
                error = ProveKeyslot(keyslot, passphrase);
            if (error == Error::None)
                error = owner.Accept(keyslot);
        } catch (...) {
            [[maybe_unused]] const Error undone = UndoKeyslot(keyslot, cost, owner);
            throw;
        }
        if (error == Error::None)
            return error;
        return UndoKeyslot(keyslot, cost, owner) == Error::None ? error : Error::NotUndone;
    });
}

// A write that failed may have reached the disk or a part of it, so what the header holds now decides. What
// fails here as well stays announced, and FinishPending does it later.
Error Header::UndoKeyslot(int keyslot, const KeyCost &cost, KeyslotOwner &owner)
{
    return Change([&] {
        Error error = owner.Announce(keyslot, cost); // it may have been accepted
        if (error == Error::None && IsAnnounced(keyslot, cost.ToText()))
            error = DestroyKeyslots({keyslot});
        return error == Error::None ? owner.Withdraw() : error;
    });
}

Error Header::RemoveKeyslot(int keyslot)
{
    return Change([&] {
        return IsWayIn(keyslot) && !LeavesWayIn({keyslot}) ? Error::LastWayIn : DestroyKeyslots({keyslot});
    });
}

} // namespace volume
