// SPDX-License-Identifier: Apache-2.0
// A challenge string as it is read out on the telephone.
#pragma once

#include <QString>

namespace pba {

// In groups of four, without any white space of its own. A blank stands behind every whole group, also behind
// the last one; three characters or fewer stay as they are.
QString GroupChallenge(const QString &challenge);

} // namespace pba
