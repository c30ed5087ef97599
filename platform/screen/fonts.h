// SPDX-License-Identifier: Apache-2.0
// Which fonts the toolkit finds, and how it draws them.
#pragma once

namespace pbe {

// Puts an own font configuration in force, before the toolkit asks for its first font and for every
// application object, since each takes the configuration with it. Reading the system's rules would be the
// most expensive step on the way to the first page. Nothing is written, not even the system's cache.
void UseOwnFonts();

} // namespace pbe
