// SPDX-License-Identifier: Apache-2.0
// Which ways in a person is offered. Whoever the volume knows none for is not offered one.
#pragma once

#include "host/service/unlock_session.h"

namespace host {

bool OffersPasswords(UnlockSession &unlockSession);

} // namespace host
