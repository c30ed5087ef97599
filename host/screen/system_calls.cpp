// SPDX-License-Identifier: Apache-2.0
#include "host/screen/system_calls.h"

#include <cerrno>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <utility>

#include <linux/netlink.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace host {
namespace {

// Files; where they may lie is for others to say.
constexpr int kFileCalls[] = {
    SCMP_SYS(access),    SCMP_SYS(close),     SCMP_SYS(close_range), SCMP_SYS(dup),        SCMP_SYS(dup2),
    SCMP_SYS(dup3),      SCMP_SYS(faccessat), SCMP_SYS(faccessat2),  SCMP_SYS(fadvise64),  SCMP_SYS(fcntl),
    SCMP_SYS(fdatasync), SCMP_SYS(flock),     SCMP_SYS(fstat),       SCMP_SYS(fstatfs),    SCMP_SYS(fsync),
    SCMP_SYS(ftruncate), SCMP_SYS(getcwd),    SCMP_SYS(getdents64),  SCMP_SYS(lseek),      SCMP_SYS(lstat),
    SCMP_SYS(mkdir),     SCMP_SYS(mkdirat),   SCMP_SYS(newfstatat),  SCMP_SYS(open),       SCMP_SYS(openat),
    SCMP_SYS(pread64),   SCMP_SYS(read),      SCMP_SYS(readlink),    SCMP_SYS(readlinkat), SCMP_SYS(readv),
    SCMP_SYS(stat),      SCMP_SYS(statfs),    SCMP_SYS(statx),       SCMP_SYS(write),      SCMP_SYS(writev),
};

constexpr int kMemoryCalls[] = {
    SCMP_SYS(brk),    SCMP_SYS(madvise),  SCMP_SYS(membarrier), SCMP_SYS(mlock),
    SCMP_SYS(mlock2), SCMP_SYS(mlockall), SCMP_SYS(mmap),       SCMP_SYS(mprotect),
    SCMP_SYS(mremap), SCMP_SYS(munlock),  SCMP_SYS(munmap),
};

// Threads, time, signals to itself, and waiting.
constexpr int kThreadCalls[] = {
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(epoll_create1),
    SCMP_SYS(epoll_ctl),
    SCMP_SYS(epoll_pwait),
    SCMP_SYS(epoll_wait),
    SCMP_SYS(eventfd2),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(futex),
    SCMP_SYS(get_robust_list),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(nanosleep),
    SCMP_SYS(pipe2),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pselect6),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_yield),
    SCMP_SYS(select),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(set_tid_address),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(time),
    SCMP_SYS(timerfd_create),
    SCMP_SYS(timerfd_gettime),
    SCMP_SYS(timerfd_settime),
};

// About itself and the machine.
constexpr int kQuestionCalls[] = {
    SCMP_SYS(arch_prctl), SCMP_SYS(getegid),   SCMP_SYS(geteuid),   SCMP_SYS(getgid),    SCMP_SYS(getgroups),
    SCMP_SYS(getpgrp),    SCMP_SYS(getpid),    SCMP_SYS(getppid),   SCMP_SYS(getrandom), SCMP_SYS(getresgid),
    SCMP_SYS(getresuid),  SCMP_SYS(getrlimit), SCMP_SYS(getrusage), SCMP_SYS(gettid),    SCMP_SYS(getuid),
    SCMP_SYS(sysinfo),    SCMP_SYS(times),     SCMP_SYS(uname),
};

constexpr int kSocketCalls[] = {
    SCMP_SYS(bind),    SCMP_SYS(getpeername), SCMP_SYS(getsockname), SCMP_SYS(getsockopt), SCMP_SYS(recvfrom),
    SCMP_SYS(recvmsg), SCMP_SYS(sendmsg),     SCMP_SYS(sendto),      SCMP_SYS(setsockopt), SCMP_SYS(shutdown),
};

// Pictures are handed to a display server through memory that both see.
constexpr int kDisplayCalls[] = {
    SCMP_SYS(connect), SCMP_SYS(shmat), SCMP_SYS(shmctl), SCMP_SYS(shmdt), SCMP_SYS(shmget),
};

// Programs, other processes, name spaces, and parts of the kernel that no library of tokens works with.
constexpr int kTamperingCalls[] = {
    SCMP_SYS(add_key),
    SCMP_SYS(bpf),
    SCMP_SYS(chroot),
    SCMP_SYS(execve),
    SCMP_SYS(execveat),
    SCMP_SYS(io_uring_setup),
    SCMP_SYS(kcmp),
    SCMP_SYS(keyctl),
    SCMP_SYS(mount),
    SCMP_SYS(move_mount),
    SCMP_SYS(name_to_handle_at),
    SCMP_SYS(open_by_handle_at),
    SCMP_SYS(perf_event_open),
    SCMP_SYS(pidfd_getfd),
    SCMP_SYS(pidfd_send_signal),
    SCMP_SYS(pivot_root),
    SCMP_SYS(process_madvise),
    SCMP_SYS(process_vm_readv),
    SCMP_SYS(process_vm_writev),
    SCMP_SYS(ptrace),
    SCMP_SYS(request_key),
    SCMP_SYS(rt_sigqueueinfo),
    SCMP_SYS(rt_tgsigqueueinfo),
    SCMP_SYS(setns),
    SCMP_SYS(tkill),
    SCMP_SYS(unshare),
    SCMP_SYS(userfaultfd),
};

class Filter
{
public:
    explicit Filter(std::uint32_t otherwise)
        : m_context(seccomp_init(otherwise), seccomp_release)
    {
        Keep(m_context ? 0 : -ENOMEM);
        Keep(seccomp_attr_set(m_context.get(), SCMP_FLTATR_ACT_BADARCH, SCMP_ACT_KILL_PROCESS));
        Keep(seccomp_attr_set(m_context.get(), SCMP_FLTATR_CTL_TSYNC, 1));
        Keep(seccomp_attr_set(m_context.get(), SCMP_FLTATR_CTL_OPTIMIZE, 2)); // by halves rather than in turn
    }

    template <std::size_t Count>
    void Allow(const int (&calls)[Count])
    {
        for (const int call : calls)
            Keep(seccomp_rule_add(m_context.get(), SCMP_ACT_ALLOW, call, 0));
    }
    void Answer(int call, int error)
    {
        Keep(seccomp_rule_add(m_context.get(), SCMP_ACT_ERRNO(error), call, 0));
    }
    // Where these bits of an argument have this value. Those above 32 are not looked at by the kernel either,
    // where it takes an int.
    void AllowIf(int call, unsigned argument, std::uint64_t bits, std::uint64_t value)
    {
        const scmp_arg_cmp comparison{argument, SCMP_CMP_MASKED_EQ, bits, value};
        Keep(seccomp_rule_add_array(m_context.get(), SCMP_ACT_ALLOW, call, 1, &comparison));
    }
    void AllowSocket(std::uint64_t domain, std::uint64_t protocol)
    {
        const scmp_arg_cmp comparisons[] = {{0, SCMP_CMP_MASKED_EQ, kInt, domain},
                                            {2, SCMP_CMP_MASKED_EQ, kInt, protocol}};
        Keep(seccomp_rule_add_array(m_context.get(), SCMP_ACT_ALLOW, SCMP_SYS(socket), 2, comparisons));
    }
    // Where an argument, an int, is any other than this one.
    void AnswerUnless(int call, std::uint64_t argument, int error)
    {
        const scmp_arg_cmp comparison{0, SCMP_CMP_NE, argument, 0};
        Keep(seccomp_rule_add_array(m_context.get(), SCMP_ACT_ERRNO(error), call, 1, &comparison));
    }
    // 0, or the first error there was.
    int Load()
    {
        if (m_error == 0)
            Keep(seccomp_load(m_context.get()));
        return m_error;
    }

    static constexpr std::uint64_t kInt = 0xFFFFFFFF;

private:
    void Keep(int result)
    {
        if (m_error == 0)
            m_error = result;
    }

    std::unique_ptr<void, decltype(&seccomp_release)> m_context;
    int m_error = 0;
};

// What tells a terminal from a file; nothing that would type on one.
void AllowDeviceCalls(Filter *filter)
{
    for (const std::uint64_t request : {TCGETS, FIONREAD, FIONBIO, TIOCGWINSZ})
        filter->AllowIf(SCMP_SYS(ioctl), 1, Filter::kInt, request);
}

void AllowInputAndFramebuffer(Filter *filter)
{
    constexpr std::uint64_t kType = 0xFF00;
    for (const std::uint64_t type : {std::uint64_t{'E'}, std::uint64_t{'F'}})
        filter->AllowIf(SCMP_SYS(ioctl), 1, kType, type << 8);
    filter->AllowSocket(AF_NETLINK, NETLINK_KOBJECT_UEVENT);
}

// Its echo and its keys, and to forget what was typed.
void AllowTerminal(Filter *filter)
{
    for (const std::uint64_t request : {TCSETS, TCSETSW, TCSETSF, TCFLSH})
        filter->AllowIf(SCMP_SYS(ioctl), 1, Filter::kInt, request);
}

// The newer call for starting threads hides what it is asked for in memory: libraries that find it missing
// take the older one.
void AllowThreads(Filter *filter)
{
    filter->AllowIf(SCMP_SYS(clone), 0, CLONE_THREAD | CLONE_NEWUSER | CLONE_NEWNS | CLONE_NEWPID,
                    CLONE_THREAD);
    filter->Answer(SCMP_SYS(clone3), ENOSYS);
    for (const std::uint64_t option : {PR_SET_NAME, PR_GET_NAME, PR_CAPBSET_READ, PR_GET_DUMPABLE})
        filter->AllowIf(SCMP_SYS(prctl), 0, Filter::kInt, option);
    filter->AllowIf(SCMP_SYS(prlimit64), 2, ~0ULL, 0);
    // For abort(); the number of the process never changes, since there is no fork.
    filter->AllowIf(SCMP_SYS(tgkill), 0, Filter::kInt, static_cast<std::uint64_t>(getpid()));
}

void AllowDisplayServer(Filter *filter)
{
    filter->Allow(kDisplayCalls);
    filter->AllowSocket(AF_UNIX, 0);
}

bool Load(Filter *filter, std::string *fault)
{
    const int error = filter->Load();
    if (error != 0)
        *fault = std::string("system calls cannot be restricted: ") + std::strerror(-error);
    return error == 0;
}

} // namespace

bool ForbidTampering(std::string *fault)
{
    Filter filter(SCMP_ACT_ALLOW);
    for (const int call : kTamperingCalls)
        filter.Answer(call, EPERM);
    for (const int call : {SCMP_SYS(kill), SCMP_SYS(tgkill)})
        filter.AnswerUnless(call, static_cast<std::uint64_t>(getpid()), EPERM);
    return Load(&filter, fault);
}

bool RestrictSystemCalls(const Confinement &confinement, std::string *fault)
{
    Filter filter(SCMP_ACT_ERRNO(EPERM));
    filter.Allow(kFileCalls);
    filter.Allow(kMemoryCalls);
    filter.Allow(kThreadCalls);
    filter.Allow(kQuestionCalls);
    filter.Allow(kSocketCalls);
    filter.AllowIf(SCMP_SYS(socketpair), 0, Filter::kInt, AF_UNIX);
    AllowDeviceCalls(&filter);
    AllowThreads(&filter);
    if (confinement.terminal)
        AllowTerminal(&filter);
    else
        AllowInputAndFramebuffer(&filter);
    if (confinement.displayServer)
        AllowDisplayServer(&filter);
    return Load(&filter, fault);
}

} // namespace host
