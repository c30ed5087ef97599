// SPDX-License-Identifier: Apache-2.0
// The steps of the intruder, each by itself.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace intruder {

struct Step
{
    const char *name;
    // Whether it succeeded; else errno tells why not. A step whose success would do harm asks for something
    // senseless: then any other error than a refusal shows that the kernel would have listened.
    std::function<bool()> attempt;
};

// As the only argument: the program was executed by its own step, and ends with this code.
inline constexpr char kExecuted[] = "--executed";
inline constexpr int kExecutedCode = 103;

void LeaveOpen(const std::string &path);
std::vector<Step> Steps(const std::string &root, const std::string &volume);

} // namespace intruder
