// SPDX-License-Identifier: Apache-2.0
// The view's files. The module names them by fixed wide paths below \pba\, without a drive letter; the
// platform keeps them below a root directory: with the root ROOT, \pba\settings.bin is ROOT/pba/settings.bin.
// Free of Qt.
#pragma once

#include <cstdint>

#include "kro/result.h"
#include "kro/string.h"
#include "pbe/export.h"

extern "C" {

// The root directory; call it before the view runs. A host that says nothing leaves the choice to the
// environment variable PBE_ROOT, and that to "/".
PBE_EXPORT void PbeSetFileRoot(const char *directory);

// `*file` becomes the running system's name of `path`, UTF-8. A path that does not begin with a backslash, or
// that has a component "..", a slash or half a surrogate pair, is refused with kInvalidArgument.
PBE_EXPORT kro::result_t PbeGetFilePath(const char16_t *path, kro::string_t *file);

// From now on `path` is the file behind `descriptor`, wherever the root is: for a host that may not open the
// file itself and was given it open. Reading starts at its beginning, writing empties it first; what it was
// not opened for gives kAccessDenied. Its descriptors share one position: it is read or written by one at a
// time. The descriptor belongs to the platform afterwards; another one for the same path takes its place.
// When it is refused it stays the caller's: kInvalidArgument for one that is not open or stands for another
// path already, kAccessDenied for what is no regular file. To be called like PbeSetFileRoot.
PBE_EXPORT kro::result_t PbeUseFile(const char16_t *path, int descriptor);

// Such a file that is empty and was last changed at this moment, in seconds since 1970, was made by the host
// to be written, and counts as missing until it has been.
inline constexpr std::int64_t kPbeNotYetWritten = 500'000'000;

// Whether something of that name exists, of whatever kind.
PBE_EXPORT bool PbeFileExists(const char16_t *path);

// Opens a regular file and stores its descriptor, which the caller closes. Never waits: anything that is not
// a regular file (a fifo, a device, a directory) is refused with kAccessDenied, like a file that may not be
// opened; a missing one gives kNotFound.
PBE_EXPORT kro::result_t PbeOpenFileForReading(const char16_t *path, int *descriptor);
// As above, emptied; a missing file is created (its directory must exist), readable by its owner only. Unlike
// reading, it does not follow a link in the last component: that is refused with kAccessDenied.
PBE_EXPORT kro::result_t PbeOpenFileForWriting(const char16_t *path, int *descriptor);

} // extern "C"
