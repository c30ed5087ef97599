// SPDX-License-Identifier: Apache-2.0
#include "tools/intruder/steps.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>

#include <fcntl.h>
#include <linux/netlink.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

namespace intruder {
namespace {

constexpr int kForgotten = 200; // a descriptor that nobody expects

bool Opens(const std::string &path, int flags)
{
    const int descriptor = open(path.c_str(), flags | O_CLOEXEC, 0600);
    if (descriptor < 0)
        return false;
    close(descriptor);
    return true;
}

template <typename... Arguments>
bool Calls(long number, Arguments... arguments)
{
    return syscall(number, arguments...) >= 0;
}

bool OpensSocket(int domain, int type, int protocol)
{
    const int descriptor = socket(domain, type | SOCK_CLOEXEC, protocol);
    if (descriptor < 0)
        return false;
    close(descriptor);
    return true;
}

bool ReachesPort()
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return false;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(9);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const bool reached = connect(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0 ||
                         errno == ECONNREFUSED;
    close(descriptor);
    return reached;
}

// The end of a child may be kept from it: what counts is that there was one.
bool Forks()
{
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    if (child > 0)
        waitpid(child, nullptr, 0);
    return child > 0;
}

// A child that comes so far says nothing any more. Where there can be none, the program that is executed ends
// in place of this one, with a code of its own.
bool Executes()
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    const pid_t child = fork();
    if (child <= 0) {
        execl("/proc/self/exe", "intruder", kExecuted, static_cast<char *>(nullptr));
        const int error = errno;
        if (child == 0)
            _exit(write(ends[1], &error, sizeof error) < 0);
        errno = error;
    }
    close(ends[1]);
    int error = child < 0 ? errno : 0;
    if (child > 0 && read(ends[0], &error, sizeof error) >= 0)
        waitpid(child, nullptr, 0);
    close(ends[0]);
    errno = error;
    return error == 0;
}

// It goes on by itself when the tracer ends or lets go.
bool TracesParent()
{
    return ptrace(PTRACE_SEIZE, getppid(), nullptr, nullptr) == 0;
}

bool ReadsParent()
{
    std::array<char, 8> buffer{};
    const iovec local{buffer.data(), buffer.size()};
    const iovec remote{buffer.data(), buffer.size()};
    return process_vm_readv(getppid(), &local, 1, &remote, 1, 0) >= 0;
}

std::string OfParent(const char *file)
{
    return "/proc/" + std::to_string(getppid()) + "/" + file;
}

bool BecomesRoot()
{
    return setresuid(0, 0, 0) == 0 && geteuid() == 0;
}

bool CanBeDumped()
{
    return prctl(PR_SET_DUMPABLE, 1) == 0;
}

// Closed is as good as refused.
bool UsesForgotten()
{
    const bool used = lseek(kForgotten, 0, SEEK_SET) == 0;
    errno = errno == EBADF ? EACCES : errno;
    return used;
}

bool IsRoot()
{
    errno = EPERM;
    return getuid() == 0 || geteuid() == 0 || getgid() == 0 || getegid() == 0 || getgroups(0, nullptr) > 1;
}

// /dev/mem is not everywhere; what else is root's alone will do.
bool OpensMemoryDevice()
{
    return Opens("/dev/mem", O_RDWR) || Opens("/dev/kmsg", O_RDONLY) || Opens("/dev/kvm", O_RDWR);
}

std::vector<Step> FileSteps(const std::string &root, const std::string &volume)
{
    const std::string file = root + "/pba/intruder.txt";
    return {
        {"read the volume", [=] { return Opens(volume, O_RDONLY); }},
        {"write the volume", [=] { return Opens(volume, O_WRONLY); }},
        {"use a forgotten descriptor", UsesForgotten},
        {"write where it reads", [=] { return Opens(file, O_WRONLY); }},
        {"add a file there", [=] { return Opens(file + ".new", O_WRONLY | O_CREAT); }},
        {"make it readable to all", [=] { return chmod(file.c_str(), 0666) == 0; }},
        {"rename it", [=] { return rename(file.c_str(), file.c_str()) == 0; }},
        {"write to /tmp", [] { return Opens("/tmp", O_RDWR | O_TMPFILE); }},
        {"list the root directory", [] { return Opens("/", O_RDONLY | O_DIRECTORY); }},
        {"read /etc/passwd", [] { return Opens("/etc/passwd", O_RDONLY); }},
        {"open a device of root's", OpensMemoryDevice},
        {"mount", [] { return Calls(SYS_mount, "none", "/nowhere", "none", 0, nullptr); }},
        {"change the root", [] { return chroot("/") == 0; }},
    };
}

std::vector<Step> ProcessSteps()
{
    return {
        {"fork", Forks},
        {"fork by the newer call", [] { return Calls(SYS_clone3, nullptr, 0); }},
        {"execute", Executes},
        {"trace the parent", TracesParent},
        {"read the parent's memory", ReadsParent},
        {"open the parent's memory", [] { return Opens(OfParent("mem"), O_RDONLY); }},
        {"open the parent's environ", [] { return Opens(OfParent("environ"), O_RDONLY); }},
        {"signal the parent", [] { return kill(getppid(), 0) == 0; }},
        {"hold the parent", [] { return Calls(SYS_pidfd_open, getppid(), 0); }},
        {"be dumped", CanBeDumped},
        {"be root still", IsRoot},
        {"become root", BecomesRoot},
        {"enter a user namespace", [] { return Calls(SYS_unshare, CLONE_NEWUTS); }},
    };
}

// With arguments that no kernel takes: if it looks at them, the call went through.
std::vector<Step> KernelSteps()
{
    return {
        {"connect to a port", ReachesPort},
        {"open an IPv6 socket", [] { return OpensSocket(AF_INET6, SOCK_DGRAM, 0); }},
        {"open a local socket", [] { return OpensSocket(AF_UNIX, SOCK_STREAM, 0); }},
        {"ask for routes", [] { return OpensSocket(AF_NETLINK, SOCK_RAW, NETLINK_ROUTE); }},
        {"type on the terminal", [] { return ioctl(STDIN_FILENO, TIOCSTI, nullptr) == 0; }},
        {"io_uring", [] { return Calls(SYS_io_uring_setup, 0, nullptr); }},
        {"bpf", [] { return Calls(SYS_bpf, -1, nullptr, 0); }},
        {"perf", [] { return Calls(SYS_perf_event_open, nullptr, 0, -1, -1, 0); }},
        {"userfaultfd", [] { return Calls(SYS_userfaultfd, -1); }},
        {"keyctl", [] { return Calls(SYS_keyctl, -1, 0, 0, 0, 0); }},
        {"a file without a name", [] { return Calls(SYS_memfd_create, nullptr, -1); }},
        {"restart the computer", [] { return Calls(SYS_reboot, 0, 0, 0, nullptr); }},
        {"set the clock", [] { return Calls(SYS_clock_settime, -1, nullptr); }},
    };
}

} // namespace

void LeaveOpen(const std::string &path)
{
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    dup2(descriptor, kForgotten);
    close(descriptor);
}

std::vector<Step> Steps(const std::string &root, const std::string &volume)
{
    std::vector<Step> steps = FileSteps(root, volume);
    for (auto &&part : {ProcessSteps(), KernelSteps()})
        steps.insert(steps.end(), part.begin(), part.end());
    return steps;
}

} // namespace intruder
