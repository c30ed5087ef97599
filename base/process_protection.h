// SPDX-License-Identifier: Apache-2.0
// Keeps secrets inside the program, and what is not meant for it out of a volume.
#pragma once

namespace base {

// No core dump is written, and no other program of the same account may look into this one. No file gets the
// number of a standard stream that was closed: a volume there would be read for a password or written over by
// a message. To be called before any file is opened and any secret is known.
void ProtectProcess();

// Keeps all memory of the process, now and later, out of the swap: a toolkit copies what is typed wherever it
// likes. Only without a limit, as root has it, who must stay root then.
void LockMemory();

} // namespace base
