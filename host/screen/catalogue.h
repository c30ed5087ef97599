// SPDX-License-Identifier: Apache-2.0
// The translations of the host's texts, for programs without the toolkit: a file of lines, each text in
// English and below it what it is in the language of the computer.
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace host {

class Catalogue
{
public:
    // Without such a file everything stays in English.
    explicit Catalogue(const std::string &path);

    std::string Get(const char *english) const;
    // With `argument` in place of "%1".
    std::string Get(const char *english, std::string_view argument) const;

private:
    std::map<std::string, std::string, std::less<>> m_texts;
};

} // namespace host
