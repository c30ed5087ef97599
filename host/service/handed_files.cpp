// SPDX-License-Identifier: Apache-2.0
#include "host/service/handed_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "base/text.h"
#include "pbe/files.h"

namespace host {
namespace {

bool IsRegular(int descriptor)
{
    struct stat status{};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// Never waits for the other end of a fifo, and takes nothing for a file that is none.
int Open(const char *name, int flags)
{
    kro::string_t path;
    if (kro::Failed(PbeGetFilePath((u"\\pba\\" + base::ToUtf16(name)).c_str(), &path)))
        return -1;
    const int file = open(path.Data(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0 || IsRegular(file))
        return file;
    close(file);
    return -1;
}

// What is written must lie where its name says, or a planted link would let a screen empty any file.
int OpenToWrite(const char *name, int flags)
{
    const int file = Open(name, O_RDWR | O_NOFOLLOW | flags);
    return file >= 0 ? file : Open(name, O_RDONLY);
}

} // namespace

// That the user's name is remembered is switched on by its file; the domain always is.
HandedFiles::HandedFiles(bool autologonAllowed)
{
    Add("settings.bin", Open("settings.bin", O_RDONLY));
    if (autologonAllowed)
        Add("autolgn.txt", Open("autolgn.txt", O_RDONLY));
    Add("last_usr.txt", OpenToWrite("last_usr.txt", 0));
    Add("last_dmn.txt", OpenToWrite("last_dmn.txt", O_CREAT));
}

void HandedFiles::Add(const char *name, int descriptor)
{
    if (descriptor >= 0)
        m_files.emplace_back(name, Descriptor(descriptor));
}

std::vector<std::string> HandedFiles::Arguments() const
{
    std::vector<std::string> arguments;
    for (const auto &[name, file] : m_files) {
        arguments.emplace_back("--file");
        arguments.push_back(std::string(name) + '=' + std::to_string(file.Number()));
    }
    return arguments;
}

std::vector<int> HandedFiles::Descriptors() const
{
    std::vector<int> descriptors;
    for (const auto &[name, file] : m_files)
        descriptors.push_back(file.Number());
    return descriptors;
}

} // namespace host
