// SPDX-License-Identifier: Apache-2.0
#include "host/service/last_login.h"

#include <unistd.h>

#include "host/log.h"
#include "pbe/files.h"
#include "base/text.h"

namespace host {
namespace {

constexpr char16_t kUserPath[] = u"\\pba\\last_usr.txt";
constexpr char16_t kDomainPath[] = u"\\pba\\last_dmn.txt";
constexpr char16_t kByteOrderMark = 0xFEFF;

// As the view writes it: an empty text makes an empty file.
bool WriteText(const char16_t *path, const std::string &text)
{
    std::u16string units = base::ToUtf16(text);
    if (!units.empty())
        units.insert(0, 1, kByteOrderMark);
    int file = -1;
    if (kro::Failed(PbeOpenFileForWriting(path, &file)))
        return false;
    const std::size_t size = units.size() * sizeof(char16_t);
    const bool written = write(file, units.data(), size) == static_cast<ssize_t>(size);
    return close(file) == 0 && written;
}

} // namespace

volume::UserName WhatToRemember(const volume::UserName &name)
{
    return {name.domain, PbeFileExists(kUserPath) ? name.user : std::string()};
}

void RestoreLastLogin(const volume::UserName &name)
{
    const volume::UserName remembered = WhatToRemember(name);
    if (!WriteText(kDomainPath, remembered.domain) ||
        (!remembered.user.empty() && !WriteText(kUserPath, remembered.user)))
        Log(kLogErrors, "The last user and domain cannot be written to the view's files.");
}

} // namespace host
