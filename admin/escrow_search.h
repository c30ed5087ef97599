// SPDX-License-Identifier: Apache-2.0
// Finds records in an escrow, which may hold those of a whole organisation. An index beside the file,
// "FILE.index", keeps the places of its records in the order of the machines' names; it is made anew whenever
// the file is not the one that it was made of. It only leads to records, it vouches for none.
#pragma once

#include <string>
#include <vector>

#include "volume/recovery/escrow_record.h"

namespace admin {

// The newest first; names are compared as users' names are. Throws Failure.
std::vector<recovery::EscrowRecord> FindRecords(const std::string &escrow, const std::string &machine);

} // namespace admin
