// SPDX-License-Identifier: Apache-2.0
// The builder of one log line. It writes into a block that the tracer owns and hands the line over when it
// goes out of scope. A line that nobody wants to read costs one question for the severity: an inactive
// builder formats and allocates nothing.
#pragma once

#include <concepts>
#include <cstdint>
#include <string_view>

#include <QString>

#include "kro/tracer.h"

namespace pba {

inline constexpr std::uint32_t kTraceError = 300;
inline constexpr std::uint32_t kTraceInfo = 700;
inline constexpr std::uint32_t kTraceDetail = 900;
// Stands for a level when a message grows, which keeps its own.
inline constexpr std::uint32_t kTraceGrow = 1000;

// "0x" and eight upper-case digits.
struct TraceHex
{
    std::uint32_t value;
};

// "0x" and four upper-case digits.
struct TraceHex16
{
    std::uint16_t value;
};

// Text that keeps its letters beyond ASCII.
struct TraceUtf8
{
    const QString &text;
};

class TraceMessage
{
public:
    explicit TraceMessage(std::uint32_t level);
    TraceMessage(kro::ITracer *tracer, std::uint32_t level);
    ~TraceMessage();
    TraceMessage(const TraceMessage &) = delete;
    TraceMessage &operator=(const TraceMessage &) = delete;

    bool IsActive() const { return m_tracer && m_text; }

    // Text ends at its first zero; null appends nothing. Of wide text only ASCII survives, the rest is "*".
    TraceMessage &operator<<(const char *text);
    TraceMessage &operator<<(const char16_t *text);
    TraceMessage &operator<<(const QString &text);
    TraceMessage &operator<<(TraceUtf8 text);

    TraceMessage &operator<<(std::int32_t value);
    TraceMessage &operator<<(std::uint32_t value);
    TraceMessage &operator<<(std::uint64_t value);
    TraceMessage &operator<<(TraceHex value);
    TraceMessage &operator<<(TraceHex16 value);
    // A template, so that no stray pointer turns into a truth value.
    TraceMessage &operator<<(std::same_as<bool> auto value) { return *this << (value ? "1" : "0"); }

private:
    char *Extend(std::uint64_t bytes);
    bool Grow(std::uint64_t needed);
    void Append(std::string_view text);
    void AppendWide(std::u16string_view text);
    void AppendNumber(std::uint64_t value, unsigned base, int width);

    kro::ITracer *m_tracer;
    char *m_text = nullptr;
    std::uint64_t m_capacity = 0;
    std::uint64_t m_length = 0;
};

} // namespace pba
