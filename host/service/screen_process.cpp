// SPDX-License-Identifier: Apache-2.0
#include "host/service/screen_process.h"

#include <cerrno>
#include <csignal>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/screen/exit_codes.h"

namespace host {
namespace {

[[noreturn]] void Fail(const char *what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// What a terminal's keys and its end mean, the service tells the screen.
void SetSignals()
{
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGHUP, SIG_IGN);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
}

// Under these numbers and no others.
void KeepOnly(const std::vector<int> &descriptors)
{
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    for (const int descriptor : descriptors)
        fcntl(descriptor, F_SETFD, 0);
}

void CloseStandardInput()
{
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (nothing >= 0)
        dup2(nothing, STDIN_FILENO);
    else
        close(STDIN_FILENO);
}

// In the new process. A thread may have held the allocator's lock when it was made, so nothing is allocated.
// The user is changed by the program itself, who may not be able to read its own libraries. What it keeps
// from the swap it goes on keeping without root's rights.
[[noreturn]] void Become(const std::vector<int> &descriptors, bool hasInput, char *const *arguments)
{
    SetSignals();
    KeepOnly(descriptors);
    if (!hasInput)
        CloseStandardInput();
    constexpr rlimit kNone{RLIM_INFINITY, RLIM_INFINITY};
    setrlimit(RLIMIT_MEMLOCK, &kNone); // where it may not be raised, it stays
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    execv(arguments[0], arguments);
    constexpr std::string_view kMissing =
        "pba_host: a program that it starts is not beside it or cannot be run; install both anew\n";
    _exit(write(STDERR_FILENO, kMissing.data(), kMissing.size()) < 0 ? kScreenFailed : kScreenCannotStand);
}

ScreenEnd Describe(int status)
{
    if (WIFSIGNALED(status))
        return {std::nullopt, "by the signal " + std::to_string(WTERMSIG(status))};
    return {WEXITSTATUS(status), "with the code " + std::to_string(WEXITSTATUS(status))};
}

template <typename Value>
void Append(std::vector<Value> *all, const std::vector<Value> &more)
{
    all->insert(all->end(), more.begin(), more.end());
}

} // namespace

ScreenProcess::ScreenProcess(const ScreenCommand &command, int channel)
{
    const HandedFiles files = command.openFiles ? command.openFiles() : HandedFiles();
    std::vector<int> descriptors{channel};
    Append(&descriptors, command.descriptors);
    Append(&descriptors, files.Descriptors());
    std::vector<std::string> words{command.program, "--channel", std::to_string(channel)};
    Append(&words, command.arguments);
    Append(&words, files.Arguments());
    std::vector<char *> arguments;
    for (std::string &word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    m_process = fork();
    if (m_process == 0)
        Become(descriptors, command.asksAtTerminal, arguments.data());
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

ScreenEnd ScreenProcess::Reap()
{
    int status = 0;
    while (m_process > 0 && waitpid(m_process, &status, 0) < 0 && errno == EINTR) {
    }
    m_process = -1;
    return Describe(status);
}

} // namespace host
