// SPDX-License-Identifier: Apache-2.0
// Why a volume did not do what was asked of it, told apart as far as a person can do something about it.
#pragma once

#include <string>

namespace volume {

enum class Error {
    None,
    WrongPassword, // also a damaged keyslot: the two cannot be told apart
    NotFound,
    NoAccess,
    NotLuks2,
    HeaderUnreadable,
    ReadOnly,
    Busy,    // another program is changing the header
    NoSpace, // Header::RoomLeft tells what there is
    Vanished,
    DiskFault, // it cannot be read or written somewhere
    OutOfMemory,
    UserExists,
    NoUser,
    LastWayIn,
    PasswordTooShort,  // for the volume's policy
    PasswordUnchanged, // though the volume's policy asks for another
    NotProven,         // a new keyslot did not open on a second look; nothing was changed
    NotUndone,         // a change failed in the middle; FinishPending undoes or finishes it
    OldPasswordStays,  // the new password counts, but the old one opens until FinishPending has succeeded
    Reencrypting,
    ForeignRequirement, // the header asks its readers for something that we do not know
    ForeignKeyslot,     // holds another key than the volume's
    Prohibited,         // by whoever started the program
    NameTaken,
    NoDeviceMapper,
    Failed,
};

// What is wrong and what to do, in one line without a full stop.
const char *Describe(Error error);

// The meaning of a negative errno value that libcryptsetup answered about the volume at `path`.
Error FromErrno(int result, const std::string &path);

} // namespace volume
