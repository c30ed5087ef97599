// SPDX-License-Identifier: Apache-2.0
// What a person is told when the volume did not do what was asked of it.
#pragma once

#include "host/screen/texts.h"
#include "host/protocol/messages.h"

namespace host {

const MessageText &MessageFor(protocol::VolumeError error);

} // namespace host
