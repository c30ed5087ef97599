#include "admin/scratch_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

#include "admin/failure.h"
#include "admin/signals.h"
#include "base/durable_name.h"

namespace admin {
namespace {

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
    std::signal(SIGXFSZ, SIG_IGN); // a file that grows too large is an error
}

} // namespace

ScratchFile::ScratchFile(const std::string &finalPath)
    : m_finalPath(finalPath)
    , m_path(finalPath + ".XXXXXX")
{
    const HeldSignals held;
    m_file = mkostemp(m_path.data(), O_CLOEXEC);
    if (m_file < 0)
        Fail("cannot be created");
    RemoveOnSignals(m_path.c_str());
}

ScratchFile::~ScratchFile()
{
    const HeldSignals held;
    s_unfinished = nullptr;
    close(m_file);
    if (!m_finished)
        unlink(m_path.c_str());
}

void ScratchFile::Write(std::string_view bytes) const
{
    while (!bytes.empty()) {
        const ssize_t count = write(m_file, bytes.data(), bytes.size());
        if (count <= 0)
            Fail("cannot be written");
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void ScratchFile::FinishNew()
{
    Synchronise();
    if (renameat2(AT_FDCWD, m_path.c_str(), AT_FDCWD, m_finalPath.c_str(), RENAME_NOREPLACE) != 0) {
        // Not every file system knows a rename that never replaces.
        if (errno != EINVAL || access(m_finalPath.c_str(), F_OK) == 0 ||
            rename(m_path.c_str(), m_finalPath.c_str()) != 0)
            Fail("cannot be created");
    }
    m_finished = true;
    volume::MakeNameDurable(m_finalPath);
}

void ScratchFile::FinishReplacing()
{
    Synchronise();
    if (rename(m_path.c_str(), m_finalPath.c_str()) != 0)
        Fail("cannot be written");
    m_finished = true;
    volume::MakeNameDurable(m_finalPath);
}

void ScratchFile::Synchronise() const
{
    if (fsync(m_file) != 0)
        Fail("cannot be written");
}

void ScratchFile::Fail(const char *what) const
{
    throw Failure(m_finalPath + ": " + what + ": " + std::strerror(errno));
}

} // namespace admin
