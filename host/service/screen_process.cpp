// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_process.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace host {
namespace {

constexpr int kNotAsUser = 126;
constexpr int kNotStarted = 127;

[[noreturn]] void Fail(const char *what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// In the new process. A thread may have held the allocator's lock when it was made, so nothing is allocated.
[[noreturn]] void Become(const ScreenCommand &command, int channel, char *const *arguments)
{
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    fcntl(channel, F_SETFD, 0);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    if (command.identity && !(Assume(*command.identity) && DropCapabilities()))
        _exit(kNotAsUser);
    execv(command.program.c_str(), arguments);
    _exit(kNotStarted);
}

std::string DescribeEnd(int status)
{
    if (WIFSIGNALED(status))
        return "by the signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) == kNotAsUser)
        return "before its start: it cannot run as the user of --screen-user";
    if (WEXITSTATUS(status) == kNotStarted)
        return "before its start: the program is missing or cannot be run";
    return "with the code " + std::to_string(WEXITSTATUS(status));
}

} // namespace

ScreenProcess::ScreenProcess(const ScreenCommand &command, int channel)
{
    std::vector<std::string> words{command.program, "--channel", std::to_string(channel)};
    words.insert(words.end(), command.arguments.begin(), command.arguments.end());
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    m_process = fork();
    if (m_process == 0)
        Become(command, channel, arguments.data());
    if (m_process < 0)
        Fail("no process for the screen");
    m_descriptor = static_cast<int>(syscall(SYS_pidfd_open, m_process, 0)); // close-on-exec
    if (m_descriptor < 0) {
        const int error = errno;
        Kill();
        Reap();
        throw std::system_error(error, std::generic_category(), "the screen's process cannot be watched");
    }
}

ScreenProcess::~ScreenProcess()
{
    Kill();
    Reap();
    if (m_descriptor >= 0)
        close(m_descriptor);
}

void ScreenProcess::Kill() const
{
    if (m_process > 0)
        kill(m_process, SIGKILL);
}

std::string ScreenProcess::Reap()
{
    int status = 0;
    while (m_process > 0 && waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    return DescribeEnd(status);
}

} // namespace host
