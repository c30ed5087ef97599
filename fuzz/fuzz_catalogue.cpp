// SPDX-License-Identifier: Apache-2.0
// Catalogues from any bytes: in one that passes the check the toolkit's reader never leaves the bytes, which
// end where memory ends.
#include <algorithm>

#include <sys/mman.h>
#include <unistd.h>

#include <QTranslator>

#include "module/views/catalogue_check.h"

namespace {

constexpr std::size_t kRoom = 64 * 1024;

// The toolkit is not instrumented: what it reads too far it reads from a page that may not be read.
std::uint8_t *EndOfMemory()
{
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void *memory = mmap(nullptr, kRoom + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    auto *end = static_cast<std::uint8_t *>(memory) + kRoom;
    mprotect(end, page, PROT_NONE);
    return end;
}

void LookUp(const QTranslator &translator)
{
    // Those of the seeds, in all ways of asking.
    for (const char *context : {"PbaMainWindow", "pba_host", ""}) {
        for (const char *source : {"Starting Windows", "%n tries", "Log on", ""}) {
            for (const int count : {-1, 0, 1, 1234567}) {
                translator.translate(context, source, nullptr, count);
                translator.translate(context, source, "verb", count);
            }
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static std::uint8_t *const s_end = EndOfMemory();
    const std::vector<std::uint8_t> checked = pba::CheckedCatalogue(data, size);
    if (checked.empty() || checked.size() > kRoom)
        return 0;
    std::uint8_t *bytes = s_end - checked.size();
    std::copy(checked.begin(), checked.end(), bytes);
    QTranslator translator;
    if (translator.load(bytes, static_cast<int>(checked.size())))
        LookUp(translator);
    return 0;
}
