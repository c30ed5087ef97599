// Keyslots behind random secrets, which an object in the header announces before they are added: should the
// power go, the object tells what to look for.
#pragma once

#include "volume.h"

namespace volume {

// The one that AddKeyslot takes next; -1 when all are taken.
int FirstFreeKeyslot(const Volume &volume);

// Whether a keyslot is what `object` announced: in no other object, and of the cost that only random secrets
// have. Anything else is somebody else's, whatever the object says.
bool IsOurs(const Volume &volume, int keyslot, int object);

} // namespace volume
