// SPDX-License-Identifier: Apache-2.0
#include "host/log.h"

#include "pbe/log.h"

namespace host {
namespace {

constexpr std::uint32_t kNamedSeverity = 5;
constexpr char kTag[] = "PBAHOST ";

} // namespace

void Log(std::uint32_t severity, const std::string &text)
{
    PbeLogMessage(severity, kNamedSeverity, kTag, (text + "\r\n").c_str());
}

} // namespace host
