// SPDX-License-Identifier: Apache-2.0
// What a person is told when the volume did not do what was asked of it.
#pragma once

#include "host/screen/texts.h"
#include "volume/luks/error.h"

namespace host {

const MessageText &MessageFor(volume::Error error);

} // namespace host
