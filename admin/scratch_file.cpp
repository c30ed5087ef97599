// SPDX-License-Identifier: Apache-2.0
#include "admin/scratch_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <unistd.h>

#include "admin/failure.h"
#include "admin/signals.h"
#include "base/durable_name.h"
#include "base/write_all.h"

namespace admin {
namespace {

constexpr mode_t kReadableByOwner = S_IRUSR | S_IWUSR;

// Read by the signal handler; null while there is nothing to remove.
const char *volatile s_unfinished = nullptr;

void RemoveAndEnd(int signal)
{
    if (s_unfinished)
        unlink(s_unfinished);
    raise(signal); // once the handler has returned, with its usual effect: see SA_RESETHAND
}

// A signal that was ignored before, as below nohup, stays ignored.
void RemoveOn(int signal)
{
    struct sigaction former = {};
    struct sigaction action = {};
    action.sa_handler = RemoveAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(signal, nullptr, &former);
    if (former.sa_handler != SIG_IGN)
        sigaction(signal, &action, nullptr);
}

void RemoveOnSignals(const char *path)
{
    s_unfinished = path;
    for (int signal : kInterruptions) {
        if (signal != SIGTSTP)
            RemoveOn(signal);
    }
}

} // namespace

ScratchFile::ScratchFile(const std::string &finalPath)
    : m_finalPath(finalPath)
{
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows too large is an error
    if (!OpenUnnamed())
        OpenNamed();
}

ScratchFile::~ScratchFile()
{
    const HeldSignals held;
    s_unfinished = nullptr;
    close(m_file);
    if (m_named)
        unlink(m_path.c_str());
}

// Its name by its number is also the only way to give it another one.
bool ScratchFile::OpenUnnamed()
{
    const std::filesystem::path directory = base::DirectoryOf(m_finalPath);
    m_file = open(directory.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, kReadableByOwner);
    m_path = "/proc/self/fd/" + std::to_string(m_file);
    if (m_file >= 0 && access(m_path.c_str(), F_OK) == 0)
        return true;
    if (m_file >= 0)
        close(m_file);
    return false;
}

void ScratchFile::OpenNamed()
{
    const HeldSignals held;
    m_path = m_finalPath + ".XXXXXX";
    m_file = mkostemp(m_path.data(), O_CLOEXEC);
    if (m_file < 0)
        Fail("cannot be created", errno);
    m_named = true;
    RemoveOnSignals(m_path.c_str());
}

void ScratchFile::Write(std::string_view bytes) const
{
    if (!base::WriteAll(m_file, bytes))
        Fail("cannot be written", errno);
}

int ScratchFile::Link(const std::string &path) const
{
    return linkat(AT_FDCWD, m_path.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

int ScratchFile::Rename(unsigned flags) const
{
    return renameat2(AT_FDCWD, m_path.c_str(), AT_FDCWD, m_finalPath.c_str(), flags) == 0 ? 0 : errno;
}

void ScratchFile::FinishNew()
{
    Synchronise();
    const HeldSignals held;
    if (!m_named)
        return Finish(Link(m_finalPath));
    int error = Rename(RENAME_NOREPLACE);
    // Not every file system knows a rename that never replaces.
    if (error == EINVAL && access(m_finalPath.c_str(), F_OK) != 0)
        error = Rename(0);
    Finish(error);
}

// Only a file with a name takes the place of another: it has one for that moment.
void ScratchFile::FinishReplacing()
{
    Synchronise();
    const HeldSignals held;
    if (!m_named) {
        if (const int error = Link(m_finalPath); error != EEXIST)
            return Finish(error);
        const std::string name = m_finalPath + '.' + std::to_string(std::random_device()());
        if (const int error = Link(name); error != 0)
            return Finish(error);
        m_path = name;
        m_named = true;
    }
    Finish(Rename(0));
}

void ScratchFile::Finish(int error)
{
    if (error != 0)
        Fail("cannot be created", error);
    m_named = false;
    base::MakeNameDurable(m_finalPath);
}

void ScratchFile::Synchronise() const
{
    if (fsync(m_file) != 0)
        Fail("cannot be written", errno);
}

void ScratchFile::Fail(const char *what, int error) const
{
    throw FileFailure(m_finalPath, what, error);
}

} // namespace admin
