// SPDX-License-Identifier: Apache-2.0
// A file in the making: it has no name yet where the file system can do without, so that nothing is left of
// it however the program ends. Elsewhere it has a temporary one in the directory of its final one, and is
// gone when it is not finished, also when a signal that can be caught ends the program. One at a time.
#pragma once

#include <string>
#include <string_view>

namespace admin {

class ScratchFile
{
public:
    // Readable by its owner only. Throws Failure, like every member.
    explicit ScratchFile(const std::string &finalPath);
    ~ScratchFile();
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    // By which this process can open it meanwhile.
    const std::string &Path() const { return m_path; }
    int File() const { return m_file; }
    void Write(std::string_view bytes) const;

    // Gives the file its final name, on the disk for good: never over an existing file, or in its place.
    void FinishNew();
    void FinishReplacing();

private:
    bool OpenUnnamed();
    void OpenNamed();
    void Synchronise() const;
    // 0 or an errno value.
    int Link(const std::string &path) const;
    int Rename(unsigned flags) const;
    void Finish(int error);
    [[noreturn]] void Fail(const char *what, int error) const;

    std::string m_finalPath;
    std::string m_path;
    int m_file = -1;
    bool m_named = false; // and to be removed
};

} // namespace admin
