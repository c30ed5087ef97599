#include "announced_keyslot.h"

#include <algorithm>

namespace volume {
namespace {

bool IsNamedElsewhere(const Volume &volume, int keyslot, int ours)
{
    const std::vector<Object> objects = volume.Objects();
    return std::any_of(objects.begin(), objects.end(), [&](const Object &object) {
        return object.number != ours &&
               std::count(object.keyslots.begin(), object.keyslots.end(), keyslot) > 0;
    });
}

} // namespace

int FirstFreeKeyslot(const Volume &volume)
{
    const std::vector<Keyslot> used = volume.Keyslots();
    for (int number = 0; number < kMaxKeyslots; ++number) {
        if (std::none_of(used.begin(), used.end(),
                         [&](const Keyslot &keyslot) { return keyslot.number == number; }))
            return number;
    }
    return -1;
}

bool IsOurs(const Volume &volume, int number, int object)
{
    const std::vector<Keyslot> keyslots = volume.Keyslots();
    return !IsNamedElsewhere(volume, number, object) &&
           std::any_of(keyslots.begin(), keyslots.end(), [&](const Keyslot &keyslot) {
               return keyslot.number == number && keyslot.cost == KeyCost::ForRandomSecret();
           });
}

} // namespace volume
