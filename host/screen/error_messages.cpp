#include "host/screen/error_messages.h"

namespace host {

using volume::Error;

const MessageText &MessageFor(Error error)
{
    switch (error) {
    case Error::WrongPassword:
        return kWrongPassword;
    case Error::PasswordTooShort:
        return kPasswordTooShort;
    case Error::PasswordUnchanged:
        return kPasswordUnchanged;
    case Error::OutOfMemory:
        return kOutOfMemory;
    case Error::Vanished:
        return kVolumeVanished;
    default:
        return kVolumeUnreadable;
    }
}

} // namespace host
