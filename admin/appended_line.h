// SPDX-License-Identifier: Apache-2.0
// A line added to the end of a file that only ever grows, on the disk for good when the constructor returns.
// It is taken back unless it is kept.
#pragma once

#include <string>
#include <sys/types.h>

namespace admin {

class AppendedLine
{
public:
    // Makes the file, readable by its owner only, when there is none. Other programs of ours wait until this
    // object ends. Throws Failure.
    AppendedLine(const std::string &path, const std::string &line);
    ~AppendedLine();
    AppendedLine(const AppendedLine &) = delete;
    AppendedLine &operator=(const AppendedLine &) = delete;

    void Keep() { m_kept = true; }

private:
    void Open();
    void TakeBack();
    void Write(const std::string &bytes) const;
    [[noreturn]] void Fail() const;

    std::string m_path;
    int m_file = -1;
    bool m_made = false; // the file was not there before
    off_t m_formerSize = 0;
    bool m_kept = false;
};

} // namespace admin
