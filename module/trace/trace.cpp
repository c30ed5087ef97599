// SPDX-License-Identifier: Apache-2.0
#include "module/trace/trace.h"

namespace pba {

namespace {

constexpr char kComponent[] = "orvane ";

} // namespace

TraceScope::TraceScope(const char *function)
    : m_function(function)
{
    TraceMessage(kTraceInfo) << kComponent << m_function << "\tBEGIN";
}

TraceScope::~TraceScope()
{
    TraceMessage(kTraceInfo) << kComponent << m_function
                             << "\tEND: " << TraceHex{static_cast<std::uint32_t>(m_result)};
}

TraceError::TraceError(const char *function, int line, kro::result_t code)
    : TraceMessage(kTraceError)
{
    *this << kComponent << function << "(" << line << ") returned "
          << TraceHex{static_cast<std::uint32_t>(code)} << " error, message: ";
}

void TraceCall(const char *function, const QString &argument)
{
    TraceMessage(kTraceInfo) << function << "(\"" << argument << "\")";
}

void TraceEmptyLine()
{
    TraceMessage line(kTraceError);
}

} // namespace pba
