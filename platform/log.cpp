// SPDX-License-Identifier: Apache-2.0
// The log: a severity and a sink. A line that is dropped costs one load of an atomic; one that is written
// costs one system call and no memory. Whatever goes wrong here, the log never stops the person who logs on:
// lines are lost rather than waited for.
#include "pbe/log.h"

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr std::uint32_t kDefaultSeverity = 300;
constexpr std::int64_t kSeverityUnknown = -1;
constexpr int kSinkUnknown = -1;
constexpr const char *kOwnTag = "PBE     ";

// Both are taken from the environment when they are first needed and nobody has set them.
std::atomic<std::int64_t> s_severity{kSeverityUnknown};
std::atomic<int> s_sink{kSinkUnknown};
// Held while the sink changes, not while a line is written.
std::mutex s_sinkMutex;
// The sink's own descriptor, once there is one. It keeps its number, and changes its file in one step, since
// another thread may be writing.
int s_ownSink = kSinkUnknown;

std::uint32_t SeverityOfEnvironment()
{
    const char *value = std::getenv("PBE_LOG_SEVERITY");
    if (!value)
        return kDefaultSeverity;
    const char *end = value + std::strlen(value);
    std::uint32_t severity = 0;
    const auto [rest, error] = std::from_chars(value, end, severity);
    return error == std::errc() && rest == end ? severity : kDefaultSeverity;
}

void SkipWritten(iovec *&part, int &parts, std::size_t written)
{
    while (parts > 0 && written >= part->iov_len) {
        written -= part->iov_len;
        ++part;
        --parts;
    }
    if (parts > 0) {
        part->iov_base = static_cast<char *>(part->iov_base) + written;
        part->iov_len -= written;
    }
}

void WriteParts(int sink, iovec *part, int parts)
{
    while (parts > 0) {
        const ssize_t written = writev(sink, part, parts);
        if (written > 0)
            SkipWritten(part, parts, static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            return;
    }
}

iovec Part(const char *text)
{
    return {const_cast<char *>(text), std::strlen(text)};
}

// A pipe or a socket would end the process when nobody reads any more.
bool IsSink(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 && (S_ISREG(status.st_mode) || S_ISCHR(status.st_mode));
}

// Never waits: neither here for a fifo's reader nor later for a terminal that stands still, so O_NONBLOCK
// stays.
int OpenSink(const char *path)
{
    const int flags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    const int sink = open(path, flags, S_IRUSR | S_IWUSR);
    if (sink < 0)
        return kSinkUnknown;
    if (IsSink(sink))
        return sink;
    close(sink);
    return kSinkUnknown;
}

int SinkOfEnvironment()
{
    const char *path = std::getenv("PBE_LOG");
    if (!path || !*path)
        return STDERR_FILENO;
    const int sink = OpenSink(path);
    if (sink != kSinkUnknown)
        return sink;
    iovec line[] = {Part(kOwnTag), Part("cannot log to "), Part(path), Part("\r\n")};
    WriteParts(STDERR_FILENO, line, static_cast<int>(std::size(line)));
    return STDERR_FILENO;
}

// With the mutex held. When it fails, the sink stays as it was and `fresh` open.
bool Use(int fresh)
{
    if (fresh != STDERR_FILENO && s_ownSink == kSinkUnknown)
        s_ownSink = fresh;
    const int sink = fresh == STDERR_FILENO ? STDERR_FILENO : s_ownSink;
    if (sink != fresh) {
        if (dup3(fresh, sink, O_CLOEXEC) < 0)
            return false;
        close(fresh);
    }
    s_sink.store(sink, std::memory_order_release);
    return true;
}

int Sink()
{
    const int sink = s_sink.load(std::memory_order_acquire);
    if (sink != kSinkUnknown)
        return sink;
    const std::lock_guard guard(s_sinkMutex);
    if (s_sink.load(std::memory_order_relaxed) == kSinkUnknown)
        Use(SinkOfEnvironment());
    return s_sink.load(std::memory_order_relaxed);
}

// A descriptor of the host becomes like one that was opened here.
bool Settle(int descriptor)
{
    const int flags = fcntl(descriptor, F_GETFL);
    return flags >= 0 && (flags & O_PATH) == 0 && (flags & O_ACCMODE) != O_RDONLY && IsSink(descriptor) &&
           fcntl(descriptor, F_SETFL, flags | O_APPEND | O_NONBLOCK) == 0 &&
           fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0;
}

} // namespace

void PbeLogMessage(std::uint32_t severity, std::uint32_t, const char *tag, const char *text)
{
    if (severity > PbeGetLogSeverity() || !tag || !text)
        return;
    const int error = errno;
    iovec line[] = {Part(tag), Part(text)};
    WriteParts(Sink(), line, static_cast<int>(std::size(line)));
    errno = error;
}

std::uint32_t PbeGetLogSeverity()
{
    const std::int64_t severity = s_severity.load(std::memory_order_relaxed);
    if (severity != kSeverityUnknown)
        return static_cast<std::uint32_t>(severity);
    // Another thread may have set it meanwhile; that choice stays.
    std::int64_t current = kSeverityUnknown;
    const std::int64_t fresh = SeverityOfEnvironment();
    if (s_severity.compare_exchange_strong(current, fresh, std::memory_order_relaxed))
        current = fresh;
    return static_cast<std::uint32_t>(current);
}

void PbeSetLogSeverity(std::uint32_t severity)
{
    s_severity.store(severity, std::memory_order_relaxed);
}

kro::result_t PbeSetLogFile(const char *path)
{
    if (!path)
        return kro::kInvalidArgument;
    const int fresh = OpenSink(path);
    if (fresh == kSinkUnknown)
        return kro::kAccessDenied;
    const std::lock_guard guard(s_sinkMutex);
    if (Use(fresh))
        return kro::kOk;
    close(fresh);
    return kro::kAccessDenied;
}

kro::result_t PbeSetLogDescriptor(int descriptor)
{
    if (descriptor < 0 || fcntl(descriptor, F_GETFD) < 0)
        return kro::kInvalidArgument;
    const std::lock_guard guard(s_sinkMutex);
    const bool usable = descriptor == STDERR_FILENO || Settle(descriptor);
    return usable && Use(descriptor) ? kro::kOk : kro::kAccessDenied;
}

int PbeGetLogDescriptor()
{
    return Sink();
}
