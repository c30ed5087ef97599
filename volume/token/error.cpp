// SPDX-License-Identifier: Apache-2.0
#include "volume/token/error.h"

namespace token {

const char *Describe(Error error)
{
    switch (error) {
    case Error::None:
        return "no error";
    case Error::PinMissing:
        return "the PIN is empty";
    case Error::WrongPin:
        return "wrong PIN";
    case Error::FewTriesLeft:
        return "wrong PIN; few tries are left before the token locks itself";
    case Error::LastTry:
        return "wrong PIN; one more wrong PIN locks the token";
    case Error::PinLocked:
        return "the PIN is locked; unlock it with the software of the token's maker";
    case Error::PinExpired:
        return "the PIN has expired; set a new one with the software of the token's maker";
    case Error::Removed:
        return "the token is not connected or does not answer; connect it again";
    case Error::NotEnrolled:
        return "the token is not enrolled for this volume";
    case Error::NoKey:
        return "the token has no key that fits; an RSA key that may decrypt is needed";
    case Error::SeveralKeys:
        return "the token has several keys that may decrypt; name one by id= in its URI";
    case Error::Cancelled:
        return "cancelled at the reader";
    case Error::Failed:
        break;
    }
    return "the token refuses; check it with the software of its maker";
}

} // namespace token
