// Which ways in a person is offered. Whoever the volume knows none for is not offered one.
#pragma once

#include "host/service/os_start.h"

namespace host {

bool OffersPasswords(OsStart &osStart);

} // namespace host
