// SPDX-License-Identifier: Apache-2.0
// The module's one tracer: owns the memory of log lines while they are built and hands them to the platform.
#pragma once

#include <cstdint>

#include "kro/tracer.h"

namespace pba {

// Gives an object that lives as long as the module the reference counting that its interface asks for.
template <typename T>
class AutoObject final : public T
{
public:
    std::uint32_t AddRef() override { return 0; }
    std::uint32_t Release() override { return 0; }
};

class PbeModuleTracer : public kro::ITracer
{
public:
    kro::result_t QueryInterface(std::uint32_t id, void **object) override;
    kro::result_t AllocateMessage(std::uint32_t level, char **text, std::uint64_t capacity) override;
    kro::result_t CommitMessage(char *text, std::uint64_t length) override;
};

kro::ITracer *GetModuleTracer();

} // namespace pba
