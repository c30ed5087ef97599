// Keeps what a person typed from leaving the program by the ways that the system offers for finding faults.
#pragma once

namespace host {

// No core dump is written, and no other program of the same account may look into this one. To be called
// before any secret is known.
void ProtectProcess();

} // namespace host
