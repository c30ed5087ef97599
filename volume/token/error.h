// SPDX-License-Identifier: Apache-2.0
// Why a token did not open a volume, told apart as far as a person can do something about it.
#pragma once

namespace token {

enum class Error {
    None,
    PinMissing, // nothing was typed; the token was not asked
    WrongPin,
    FewTriesLeft, // a wrong PIN, and few more may follow
    LastTry,      // a wrong PIN, and only one more may follow
    PinLocked,
    PinExpired,
    Removed,     // it is not there any more, or does not answer
    NotEnrolled, // the volume does not know it
    NoKey,       // none of its keys opens what the volume keeps for it
    SeveralKeys, // more than one would do, and the URI does not say which
    Cancelled,   // by the person, at the reader
    Failed,
};

// What is wrong and what to do, in one line without a full stop.
const char *Describe(Error error);

} // namespace token
