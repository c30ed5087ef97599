// SPDX-License-Identifier: Apache-2.0
// How a command gives up: a line for standard error, or one for each fault, and the exit code of the program.
#pragma once

#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "volume/luks/error.h"

namespace admin {

inline constexpr int kExitFailed = 1;
inline constexpr int kExitUsage = 2;

class Failure : public std::exception
{
public:
    explicit Failure(std::string line, int exitCode = kExitFailed)
        : m_lines{std::move(line)}
        , m_exitCode(exitCode)
    {
    }
    explicit Failure(std::vector<std::string> lines)
        : m_lines(std::move(lines))
        , m_exitCode(kExitFailed)
    {
    }
    const std::vector<std::string> &Lines() const { return m_lines; }
    int ExitCode() const { return m_exitCode; }

private:
    std::vector<std::string> m_lines;
    int m_exitCode;
};

// `what` was to be done to the file; `error` is an errno value.
Failure FileFailure(const std::string &path, const char *what, int error);

// Throws unless `error` is none. `subject` is what it is about, `detail` a technician's words, may be empty.
inline void Require(volume::Error error, const std::string &subject, const std::string &detail = {})
{
    if (error == volume::Error::None)
        return;
    const bool unexplained = error == volume::Error::Failed && !detail.empty();
    throw Failure(subject + ": " + (unexplained ? detail : volume::Describe(error)));
}

} // namespace admin
