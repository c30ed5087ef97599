// SPDX-License-Identifier: Apache-2.0
#include "host/screen/error_messages.h"

namespace host {

using protocol::VolumeError;

const MessageText &MessageFor(VolumeError error)
{
    switch (error) {
    case VolumeError::WrongPassword:
        return kWrongPassword;
    case VolumeError::PasswordTooShort:
        return kPasswordTooShort;
    case VolumeError::PasswordUnchanged:
        return kPasswordUnchanged;
    case VolumeError::OutOfMemory:
        return kOutOfMemory;
    case VolumeError::Vanished:
        return kVolumeVanished;
    case VolumeError::DiskFault:
        return kDiskFault;
    case VolumeError::Busy:
        return kVolumeBusy;
    default:
        return kVolumeUnreadable;
    }
}

bool AnotherPasswordMayDo(VolumeError error)
{
    return error == VolumeError::PasswordTooShort || error == VolumeError::PasswordUnchanged ||
           error == VolumeError::OutOfMemory;
}

} // namespace host
