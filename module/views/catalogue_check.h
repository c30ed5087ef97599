// SPDX-License-Identifier: Apache-2.0
// The check of a catalogue. The toolkit's reader believes every length and offset in it, so that a damaged
// sector of the disk would end each start of the view. Free of Qt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace pba {

// What the toolkit's reader may see of a catalogue: within it the reader stays whatever text it is asked for.
// Empty when the catalogue is damaged.
std::vector<std::uint8_t> CheckedCatalogue(const std::uint8_t *bytes, std::size_t size);

} // namespace pba
