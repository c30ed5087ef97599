// SPDX-License-Identifier: Apache-2.0
#include "base/memory.h"

#include <fstream>
#include <limits>
#include <string>
#include <string_view>

namespace base {
namespace {

std::uint64_t ReadMemoryInfo(std::string_view key)
{
    std::ifstream info("/proc/meminfo");
    std::string name;
    std::uint64_t value = 0;
    while (info >> name >> value) {
        if (name == key)
            return value;
        info.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return 0;
}

} // namespace

std::uint64_t TotalMemory()
{
    return ReadMemoryInfo("MemTotal:");
}

std::uint64_t AvailableMemory()
{
    return ReadMemoryInfo("MemAvailable:");
}

} // namespace base
