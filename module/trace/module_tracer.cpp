// SPDX-License-Identifier: Apache-2.0
#include "module/trace/module_tracer.h"

#include <cstdlib>
#include <limits>

#include "pbe/log.h"

namespace pba {

namespace {

constexpr char kTag[] = "PBAQT   ";
// The bytes "RTBP".
constexpr std::uint32_t kSignature = 0x50425452;
// CR, LF and the zero.
constexpr std::uint64_t kTerminatorSize = 3;

// What stands in front of each message's text.
struct BlockHeader
{
    std::uint32_t signature;
    std::uint32_t level;
    std::uint64_t size;

    char *Text() { return reinterpret_cast<char *>(this + 1); }
    static BlockHeader *Of(char *text) { return reinterpret_cast<BlockHeader *>(text) - 1; }
};

static_assert(sizeof(BlockHeader) == 16);

constexpr std::uint64_t kOverhead = sizeof(BlockHeader) + kTerminatorSize;

// The block again with room for `capacity` bytes of text, or a new one; null, and the old one freed, without
// memory.
BlockHeader *Reallocate(BlockHeader *block, std::uint32_t level, std::uint64_t capacity)
{
    const bool fits = capacity <= std::numeric_limits<std::uint64_t>::max() - kOverhead;
    const std::uint64_t size = capacity + kOverhead;
    auto *grown = fits ? static_cast<BlockHeader *>(std::realloc(block, size)) : nullptr;
    if (grown)
        *grown = {kSignature, level, size};
    else
        std::free(block);
    return grown;
}

// Whether the level is one that has a name.
bool IsNamedLevel(std::uint32_t level)
{
    return level >= 100 && level <= 1000 && level % 100 == 0;
}

// Ready before anything is constructed: the module logs while it is being loaded.
constinit AutoObject<PbeModuleTracer> moduleTracer;

} // namespace

kro::result_t PbeModuleTracer::QueryInterface(std::uint32_t id, void **object)
{
    if (id == kro::kObjectInterfaceId)
        *object = static_cast<kro::IObject *>(this);
    else if (id == kro::kTracerInterfaceId)
        *object = static_cast<kro::ITracer *>(this);
    else
        *object = nullptr;
    if (!*object)
        return kro::kInterfaceNotSupported;
    AddRef();
    return kro::kOk;
}

kro::result_t PbeModuleTracer::AllocateMessage(std::uint32_t level, char **text, std::uint64_t capacity)
{
    BlockHeader *block = nullptr;
    if (*text) {
        block = BlockHeader::Of(*text);
        level = block->level;
    } else if (level > PbeGetLogSeverity()) {
        return kro::kUnspecifiedError;
    }
    block = Reallocate(block, level, capacity);
    if (!block)
        return kro::kOutOfMemory;
    *text = block->Text();
    return kro::kOk;
}

kro::result_t PbeModuleTracer::CommitMessage(char *text, std::uint64_t length)
{
    text[length] = '\r';
    text[length + 1] = '\n';
    text[length + 2] = '\0';
    BlockHeader *block = BlockHeader::Of(text);
    PbeLogMessage(block->level, IsNamedLevel(block->level) ? 5 : 0, kTag, text);
    std::free(block);
    return kro::kOk;
}

kro::ITracer *GetModuleTracer()
{
    return &moduleTracer;
}

} // namespace pba
