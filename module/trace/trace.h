// SPDX-License-Identifier: Apache-2.0
// The fixed shapes of log lines: begin and end of a function, a call with its argument, an error, an empty
// line.
#pragma once

#include <QString>

#include "kro/result.h"
#include "module/trace/trace_message.h"

namespace pba {

// Writes BEGIN at once and END, with the result, however the function is left.
class TraceScope
{
public:
    // `function` is a literal: the qualified name.
    explicit TraceScope(const char *function);
    ~TraceScope();
    TraceScope(const TraceScope &) = delete;
    TraceScope &operator=(const TraceScope &) = delete;

    void SetResult(kro::result_t result) { m_result = result; }

private:
    const char *m_function;
    kro::result_t m_result = kro::kOk;
};

// The beginning of an error line; the message text is appended to it.
class TraceError : public TraceMessage
{
public:
    TraceError(const char *function, int line, kro::result_t code);
};

void TraceCall(const char *function, const QString &argument);
void TraceEmptyLine();

} // namespace pba
