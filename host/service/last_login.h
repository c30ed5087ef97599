// SPDX-License-Identifier: Apache-2.0
// The view's files of the last user and domain, where the volume's header remembers them: a root that is made
// anew at each start has lost what the view wrote.
#pragma once

#include "volume/luks/user.h"

namespace host {

// The domain always, the user name only where its file stands: the installation switches the memory on by it.
volume::UserName WhatToRemember(const volume::UserName &name);

// Before the view runs. What cannot be written is not remembered.
void RestoreLastLogin(const volume::UserName &name);

} // namespace host
