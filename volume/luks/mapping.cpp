// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/mapping.h"

#include <algorithm>
#include <fstream>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace volume {
namespace {

namespace fs = std::filesystem;

std::string ReadLine(const fs::path &file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

fs::path FindMapping(const fs::path &sysfs, std::string_view name)
{
    std::error_code error;
    for (const fs::directory_entry &entry : fs::directory_iterator(sysfs / "block", error)) {
        if (ReadLine(entry.path() / "dm/name") == name)
            return entry.path();
    }
    return {};
}

bool IsDevice(const fs::path &below, const struct stat &volume)
{
    const std::string number =
        std::to_string(major(volume.st_rdev)) + ":" + std::to_string(minor(volume.st_rdev));
    return S_ISBLK(volume.st_mode) && ReadLine(below / "dev") == number;
}

bool IsLoopOver(const fs::path &below, const struct stat &volume)
{
    struct stat backing;
    return S_ISREG(volume.st_mode) && stat(ReadLine(below / "loop/backing_file").c_str(), &backing) == 0 &&
           backing.st_dev == volume.st_dev && backing.st_ino == volume.st_ino;
}

// One device below, and it is the volume: a mapping over several devices is not one that we made.
bool LiesOnlyOver(const fs::path &mapping, const std::string &volumePath)
{
    struct stat volume;
    if (stat(volumePath.c_str(), &volume) != 0)
        return false;
    std::error_code error;
    int devices = 0;
    int ours = 0;
    for (const fs::directory_entry &entry : fs::directory_iterator(mapping / "slaves", error)) {
        ++devices;
        ours += IsDevice(entry.path(), volume) || IsLoopOver(entry.path(), volume);
    }
    return devices == 1 && ours == 1;
}

} // namespace

bool IsMappedOver(const fs::path &sysfs, std::string_view name, std::string luksUuid,
                  const std::string &volumePath)
{
    luksUuid.erase(std::remove(luksUuid.begin(), luksUuid.end(), '-'), luksUuid.end());
    const fs::path mapping = FindMapping(sysfs, name);
    return !mapping.empty() && !luksUuid.empty() &&
           ReadLine(mapping / "dm/uuid").starts_with("CRYPT-LUKS2-" + luksUuid + "-") &&
           LiesOnlyOver(mapping, volumePath);
}

} // namespace volume
