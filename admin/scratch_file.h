// A file in the making: it has a temporary name in the directory of its final one, and is gone when it is not
// finished, also when a signal ends the program. One at a time.
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

    const std::string &Path() const { return m_path; }
    int File() const { return m_file; }
    void Write(std::string_view bytes) const;

    // Gives the file its final name, on the disk for good: never over an existing file, or in its place.
    void FinishNew();
    void FinishReplacing();

private:
    void Synchronise() const;
    [[noreturn]] void Fail(const char *what) const;

    std::string m_finalPath;
    std::string m_path;
    int m_file = -1;
    bool m_finished = false;
};

} // namespace admin
