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
    NoSpace,
    Vanished,
    OutOfMemory,
    UserExists,
    NameTaken,
    NoDeviceMapper,
    Failed,
};

// What is wrong and what to do, in one line without a full stop.
const char *Describe(Error error);

// The meaning of a negative errno value that libcryptsetup answered about the volume at `path`.
Error FromErrno(int result, const std::string &path);

} // namespace volume
