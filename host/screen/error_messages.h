// SPDX-License-Identifier: Apache-2.0
// What a person is told when the volume did not do what was asked of it.
#pragma once

#include "host/protocol/messages.h"
#include "host/screen/texts.h"

namespace host {

const MessageText &MessageFor(protocol::VolumeError error);
// Whether the person may choose another new password, after this one was refused.
bool AnotherPasswordMayDo(protocol::VolumeError error);

} // namespace host
