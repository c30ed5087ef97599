// SPDX-License-Identifier: Apache-2.0
// Writes the version record when the module is loaded, so that every log says which module it comes from.
#include "module/trace/trace_message.h"
#include "module/trace/version.h"

namespace {

constexpr char16_t kRecordBegin[] = u"MODULE_VERSION_INFO {pba_view, Quillmark, version: ";

// Uses nothing that a constructor would have to set up first.
__attribute__((constructor)) void TraceModuleVersion()
{
    pba::TraceMessage(pba::kTraceInfo) << kRecordBegin << pba::kModuleVersion << u"}";
}

} // namespace
