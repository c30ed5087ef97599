// How a command gives up: one line for standard error and the exit code of the program.
#pragma once

#include <stdexcept>
#include <string>

#include "volume/error.h"

namespace admin {

inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

class Failure : public std::runtime_error
{
public:
    explicit Failure(const std::string &line, int exitCode = kExitFailed)
        : std::runtime_error(line)
        , m_exitCode(exitCode)
    {
    }
    int ExitCode() const { return m_exitCode; }

private:
    int m_exitCode;
};

// Throws unless `error` is none. `subject` is what it is about, `detail` a technician's words, may be empty.
inline void Require(volume::Error error, const std::string &subject, const std::string &detail = {})
{
    if (error == volume::Error::None)
        return;
    const bool unexplained = error == volume::Error::Failed && !detail.empty();
    throw Failure(subject + ": " + (unexplained ? detail : volume::Describe(error)));
}

} // namespace admin
