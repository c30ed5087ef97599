// SPDX-License-Identifier: Apache-2.0
// What a person is told when a token does not open the volume.
#pragma once

#include "host/screen/texts.h"
#include "host/protocol/messages.h"

namespace host {

// `error` is a refusal that the person has not brought about on purpose.
const MessageText &MessageFor(protocol::TokenError error);

// The name in the list of a token whose PIN is typed at its reader; "%1" stands for its own name.
extern const char *const kPinPadName;

} // namespace host
