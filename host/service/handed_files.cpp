// SPDX-License-Identifier: Apache-2.0
#include "host/service/handed_files.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "base/text.h"
#include "pbe/files.h"

namespace host {
namespace {

constexpr char kMade[] = "last_dmn.txt";

bool IsRegular(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

std::string PathOf(const char *name)
{
    kro::string_t path;
    const bool known = !kro::Failed(PbeGetFilePath((u"\\pba\\" + base::ToUtf16(name)).c_str(), &path));
    return known ? std::string(path.View()) : std::string();
}

// Never waits for the other end of a fifo, and takes nothing for a file that is none.
int Open(const char *name, int flags)
{
    const int file = open(PathOf(name).c_str(), flags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0 || IsRegular(file))
        return file;
    close(file);
    return -1;
}

// What is written must lie where its name says, or a planted link would let a screen empty any file.
int OpenToWrite(const char *name)
{
    const int file = Open(name, O_RDWR | O_NOFOLLOW);
    return file >= 0 ? file : Open(name, O_RDONLY);
}

// The view takes the file for missing, as long as nothing was written.
int OpenOrMake(const char *name)
{
    const int made = Open(name, O_RDWR | O_CREAT | O_EXCL);
    if (made < 0)
        return OpenToWrite(name);
    const timespec times[] = {{kPbeNotYetWritten, 0}, {kPbeNotYetWritten, 0}};
    if (futimens(made, times) == 0)
        return made;
    close(made);
    return -1;
}

} // namespace

// That the user's name is remembered is switched on by its file; the domain always is.
HandedFiles::HandedFiles(bool autologonAllowed)
{
    Add("settings.bin", Open("settings.bin", O_RDONLY));
    if (autologonAllowed)
        Add("autolgn.txt", Open("autolgn.txt", O_RDONLY));
    Add("last_usr.txt", OpenToWrite("last_usr.txt"));
    Add(kMade, OpenOrMake(kMade));
}

void HandedFiles::RemoveUnwritten()
{
    const std::string path = PathOf(kMade);
    struct stat status
    {
    };
    if (lstat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && status.st_size == 0 &&
        status.st_mtime == kPbeNotYetWritten)
        unlink(path.c_str());
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
