// SPDX-License-Identifier: Apache-2.0
#include "host/screen/catalogue.h"

#include <fstream>

namespace host {

Catalogue::Catalogue(const std::string &path)
{
    std::ifstream file(path);
    std::string english, translated;
    while (std::getline(file, english) && std::getline(file, translated))
        m_texts.emplace(std::move(english), std::move(translated));
}

std::string Catalogue::Get(const char *english) const
{
    const auto found = m_texts.find(english);
    return found == m_texts.end() ? english : found->second;
}

std::string Catalogue::Get(const char *english, std::string_view argument) const
{
    constexpr std::string_view kPlace = "%1";
    std::string line = Get(english);
    if (const std::size_t place = line.find(kPlace); place != line.npos)
        line.replace(place, kPlace.size(), argument);
    return line;
}

} // namespace host
