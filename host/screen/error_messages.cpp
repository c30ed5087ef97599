// SPDX-License-Identifier: Apache-2.0
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
    case Error::DiskFault:
        return kDiskFault;
    case Error::Busy:
        return kVolumeBusy;
    default:
        return kVolumeUnreadable;
    }
}

} // namespace host
