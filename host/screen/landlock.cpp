// SPDX-License-Identifier: Apache-2.0
#include "host/screen/landlock.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace host {
namespace {

// What the kernel's header on the building machine may be too old to name.
constexpr std::uint64_t kRefer = 1ULL << 13;       // from version 2 on
constexpr std::uint64_t kTruncate = 1ULL << 14;    // 3
constexpr std::uint64_t kTcp = 3;                  // 4: bind and connect
constexpr std::uint64_t kDeviceIoctl = 1ULL << 15; // 5
constexpr std::uint64_t kScopeAbstractSockets = 1; // 6
constexpr std::uint64_t kScopeSignals = 2;         // 6

constexpr std::uint64_t kFirstVersion = (1ULL << 13) - 1;
constexpr std::uint64_t kRead = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t kWrite = kRead | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG |
                                 LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                                 LANDLOCK_ACCESS_FS_REMOVE_DIR | kTruncate | kDeviceIoctl;
// The rights that make sense on what is not a directory; the kernel refuses the others there.
constexpr std::uint64_t kOfFiles =
    LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE | kTruncate | kDeviceIoctl;

struct RulesetAttributes
{
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scopes;
};

struct Descriptor
{
    explicit Descriptor(long number)
        : number(static_cast<int>(number))
    {
    }
    ~Descriptor()
    {
        if (number >= 0)
            close(number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    const int number;
};

bool Refuse(const std::string &what, std::string *fault)
{
    *fault = what + ": " + std::strerror(errno);
    return false;
}

// 0 where the kernel has none.
long Version()
{
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    return version > 0 ? version : 0;
}

RulesetAttributes AttributesOf(long version, bool displayServer)
{
    RulesetAttributes attributes{kFirstVersion, 0, 0};
    attributes.files |= version >= 2 ? kRefer : 0;
    attributes.files |= version >= 3 ? kTruncate : 0;
    attributes.files |= version >= 5 ? kDeviceIoctl : 0;
    attributes.network = version >= 4 ? kTcp : 0;
    // A display server may listen on a socket without a path.
    if (version >= 6)
        attributes.scopes = displayServer ? kScopeSignals : kScopeSignals | kScopeAbstractSockets;
    return attributes;
}

bool Allow(int ruleset, const std::string &path, std::uint64_t rights, std::string *fault)
{
    const Descriptor target(open(path.c_str(), O_PATH | O_CLOEXEC));
    if (target.number < 0 && (errno == ENOENT || errno == EACCES))
        return true; // out of reach in any case
    struct stat status;
    if (target.number < 0 || fstat(target.number, &status) != 0)
        return Refuse(path, fault);
    const landlock_path_beneath_attr rule{S_ISDIR(status.st_mode) ? rights : rights & kOfFiles,
                                          target.number};
    return syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0 ||
           Refuse(path, fault);
}

} // namespace

bool RestrictPaths(const Confinement &confinement, std::string *fault)
{
    const long version = Version();
    if (version == 0 && confinement.landlockRequired)
        *fault = "the kernel has no Landlock; switch it on, or do without the option that requires it";
    if (version == 0)
        return !confinement.landlockRequired;
    const RulesetAttributes attributes = AttributesOf(version, confinement.displayServer);
    const Descriptor ruleset(syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0));
    if (ruleset.number < 0)
        return Refuse("Landlock", fault);
    for (const std::string &path : confinement.readable) {
        if (!Allow(ruleset.number, path, kRead & attributes.files, fault))
            return false;
    }
    for (const std::string &path : confinement.writable) {
        if (!Allow(ruleset.number, path, kWrite & attributes.files, fault))
            return false;
    }
    return syscall(SYS_landlock_restrict_self, ruleset.number, 0) == 0 || Refuse("Landlock", fault);
}

} // namespace host
