// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/error.h"

#include <cerrno>
#include <sys/stat.h>

namespace volume {

const char *Describe(Error error)
{
    switch (error) {
    case Error::None:
        return "no error";
    case Error::WrongPassword:
        return "wrong password, or the keyslot is damaged";
    case Error::NotFound:
        return "there is no such file or device; check the path";
    case Error::NoAccess:
        return "access denied; run as root, or as an account that may use it";
    case Error::NotLuks2:
        return "not a LUKS2 volume; create or convert one first";
    case Error::HeaderUnreadable:
        return "the LUKS2 header is damaged or cut short; restore it from a backup";
    case Error::ReadOnly:
        return "read-only; make it writable first";
    case Error::Busy:
        return "another program is changing the volume; try again when it is done";
    case Error::NoSpace:
        return "the LUKS2 header has no room left; remove a user or a keyslot first";
    case Error::Vanished:
        return "the device has vanished; connect it again";
    case Error::DiskFault:
        return "the disk cannot be read or written; check it, its cable and, of a file, the space for it";
    case Error::OutOfMemory:
        return "not enough memory to derive the key; free some or restart the computer";
    case Error::UserExists:
        return "the user exists already; choose another name";
    case Error::NoUser:
        return "there is no such user; check name and domain";
    case Error::LastWayIn:
        return "this is the last password that opens the volume; add another one first";
    case Error::PasswordTooShort:
        return "the new password is shorter than the policy of the volume asks; choose a longer one";
    case Error::PasswordUnchanged:
        return "the new password is the old one; choose another one";
    case Error::NotProven:
        return "what was written does not open the volume, and was undone; check the disk";
    case Error::NotUndone:
        return "the disk failed in the middle of a change; check the disk, then try again";
    case Error::OldPasswordStays:
        return "the new password counts, but the old one could not be removed; check the disk and try again";
    case Error::Reencrypting:
        return "the volume is being re-encrypted; finish that with cryptsetup reencrypt --resume-only first";
    case Error::ForeignRequirement:
        return "the LUKS2 header requires what this program does not know; use the tool that set it up";
    case Error::ForeignKeyslot:
        return "the keyslot holds another key than the volume's; use the tool that added it";
    case Error::Prohibited:
        return "logins by password are switched off; use a token";
    case Error::NameTaken:
        return "the mapper name is taken by another device; choose another name";
    case Error::NoDeviceMapper:
        return "the device mapper cannot be used; load dm_crypt and run as root";
    case Error::Failed:
        break;
    }
    return "the operation failed";
}

Error FromErrno(int result, const std::string &path)
{
    struct stat status;
    switch (-result) {
    case EPERM:
        return Error::WrongPassword;
    case ENOMEM:
        return Error::OutOfMemory;
    case EACCES:
    case EROFS:
        return Error::ReadOnly;
    case ENOSPC:
        return Error::NoSpace;
    case ENODEV:
    case ENXIO:
        return Error::Vanished;
    default:
        if (stat(path.c_str(), &status) != 0)
            return Error::Vanished;
        return result == -EIO ? Error::DiskFault : Error::Failed;
    }
}

} // namespace volume
