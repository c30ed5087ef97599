// SPDX-License-Identifier: Apache-2.0
#include "module/trace/trace_message.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

#include "module/trace/module_tracer.h"

namespace pba {

namespace {

constexpr std::uint64_t kInitialCapacity = 512;

char ToAscii(char16_t unit)
{
    return unit < 0x80 ? static_cast<char>(unit) : '*';
}

} // namespace

TraceMessage::TraceMessage(std::uint32_t level)
    : TraceMessage(GetModuleTracer(), level)
{
}

TraceMessage::TraceMessage(kro::ITracer *tracer, std::uint32_t level)
    : m_tracer(tracer)
{
    if (!m_tracer)
        return;
    if (m_tracer->AllocateMessage(level, &m_text, kInitialCapacity) == kro::kOk)
        m_capacity = kInitialCapacity;
    else
        m_text = nullptr;
}

TraceMessage::~TraceMessage()
{
    if (IsActive())
        m_tracer->CommitMessage(m_text, m_length);
}

TraceMessage &TraceMessage::operator<<(const char *text)
{
    if (IsActive() && text)
        Append(text);
    return *this;
}

TraceMessage &TraceMessage::operator<<(const char16_t *text)
{
    if (IsActive() && text)
        AppendWide(text);
    return *this;
}

TraceMessage &TraceMessage::operator<<(const QString &text)
{
    if (IsActive()) {
        const std::u16string_view units(QStringView(text).utf16(), text.size());
        AppendWide(units.substr(0, units.find(u'\0')));
    }
    return *this;
}

TraceMessage &TraceMessage::operator<<(TraceUtf8 text)
{
    if (!IsActive())
        return *this;
    try {
        return *this << text.text.toUtf8().constData();
    } catch (const std::bad_alloc &) {
        return *this;
    }
}

TraceMessage &TraceMessage::operator<<(std::int32_t value)
{
    if (value < 0)
        *this << "-";
    const std::int64_t wide = value;
    AppendNumber(wide < 0 ? -wide : wide, 10, 1);
    return *this;
}

TraceMessage &TraceMessage::operator<<(std::uint32_t value)
{
    AppendNumber(value, 10, 1);
    return *this;
}

TraceMessage &TraceMessage::operator<<(std::uint64_t value)
{
    AppendNumber(value, 10, 1);
    return *this;
}

TraceMessage &TraceMessage::operator<<(TraceHex value)
{
    *this << "0x";
    AppendNumber(value.value, 16, 8);
    return *this;
}

TraceMessage &TraceMessage::operator<<(TraceHex16 value)
{
    *this << "0x";
    AppendNumber(value.value, 16, 4);
    return *this;
}

// The place for `bytes` more bytes, already counted; null when there is none and the append is dropped.
char *TraceMessage::Extend(std::uint64_t bytes)
{
    if (bytes > std::numeric_limits<std::uint64_t>::max() - m_length)
        return nullptr;
    const std::uint64_t needed = m_length + bytes;
    if (needed > m_capacity && !Grow(needed))
        return nullptr;
    char *place = m_text + m_length;
    m_length = needed;
    return place;
}

// The tracer has freed the block when it could not grow it: nothing may be appended or committed any more.
bool TraceMessage::Grow(std::uint64_t needed)
{
    const std::uint64_t capacity = std::max(needed, 2 * m_capacity);
    if (m_tracer->AllocateMessage(kTraceGrow, &m_text, capacity) == kro::kOk && m_text) {
        m_capacity = capacity;
        return true;
    }
    m_text = nullptr;
    m_capacity = 0;
    m_length = 0;
    return false;
}

void TraceMessage::Append(std::string_view text)
{
    if (char *place = Extend(text.size()))
        std::memcpy(place, text.data(), text.size());
}

void TraceMessage::AppendWide(std::u16string_view text)
{
    if (char *place = Extend(text.size()))
        std::transform(text.begin(), text.end(), place, ToAscii);
}

void TraceMessage::AppendNumber(std::uint64_t value, unsigned base, int width)
{
    if (!IsActive())
        return;
    char digits[std::numeric_limits<std::uint64_t>::digits10 + 1];
    char *const end = std::end(digits);
    char *begin = end;
    do {
        *--begin = "0123456789ABCDEF"[value % base];
        value /= base;
    } while (value > 0);
    while (end - begin < width)
        *--begin = '0';
    Append(std::string_view(begin, end - begin));
}

} // namespace pba
