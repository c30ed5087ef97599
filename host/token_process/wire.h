// SPDX-License-Identifier: Apache-2.0
// Tokens and their errors, as the messages have them.
#pragma once

#include "host/protocol/token_messages.h"
#include "volume/token/error.h"
#include "volume/token/token.h"

namespace token_process {

protocol::TokenIdentity ToMessage(const token::Description &token);
// As many as there is room for.
protocol::ListTokensReply ToMessage(const std::vector<token::Token> &tokens, bool loaded);
std::vector<token::Description> FromMessage(const protocol::ListTokensReply &reply);

protocol::TokenError ToMessage(token::Error error);
token::Error FromMessage(protocol::TokenError error);

} // namespace token_process
