// SPDX-License-Identifier: Apache-2.0
// A catalogue is a magic number and sections: a byte that tells its kind, its length, and as many bytes.
// Integers are big-endian.
//
//   hashes    of each text its hash, in ascending order, and where its message begins in the messages
//   messages  each a list of items, a tag and what belongs to it, up to the tag of its end
//   others    the language, the rules of plural forms, which the reader checks itself, and contexts, which it
//             can do without: the toolkit's own tool writes lists of them that have no end
#include "module/views/catalogue_check.h"

#include <algorithm>
#include <array>
#include <map>
#include <vector>

namespace pba {

namespace {

constexpr std::array<std::uint8_t, 16> kMagic = {0x3c, 0xb8, 0x64, 0x18, 0xca, 0xef, 0x9c, 0x95,
                                                 0xcd, 0x21, 0x1c, 0xbf, 0x60, 0xa1, 0xbd, 0xdd};

// There is one more kind, which names other files to be loaded: those nobody would have checked.
enum Section : std::uint8_t {
    kContexts = 0x2f,
    kHashes = 0x42,
    kMessages = 0x69,
    kPluralRules = 0x88,
    kLanguage = 0xa7,
};

enum Tag : std::uint8_t {
    kEnd = 1,
    kTranslation = 3,
    kFourBytes = 5,
    kSourceText = 6,
    kContext = 7,
    kComment = 8,
};

// In place of the length of a translation: there is none, and the reader stops.
constexpr std::uint32_t kNoText = 0xffffffff;

// Bytes that are taken from the front, and never more of them than there are.
class Bytes
{
public:
    Bytes() = default;
    Bytes(const std::uint8_t *begin, std::size_t size)
        : m_begin(begin)
        , m_size(size)
    {
    }

    const std::uint8_t *Begin() const { return m_begin; }
    std::size_t Size() const { return m_size; }
    bool IsEmpty() const { return m_size == 0; }

    bool Take(std::size_t size, Bytes *front)
    {
        if (size > m_size)
            return false;
        *front = Bytes(m_begin, size);
        m_begin += size;
        m_size -= size;
        return true;
    }

    bool Skip(std::size_t size)
    {
        Bytes skipped;
        return Take(size, &skipped);
    }

    template <typename Integer>
    bool Read(Integer *value)
    {
        Bytes front;
        if (!Take(sizeof *value, &front))
            return false;
        std::uint64_t read = 0;
        for (std::size_t i = 0; i < front.m_size; ++i)
            read = read << 8 | front.m_begin[i];
        *value = static_cast<Integer>(read);
        return true;
    }

private:
    const std::uint8_t *m_begin = nullptr;
    std::size_t m_size = 0;
};

using Sections = std::map<std::uint8_t, Bytes>;

// Each kind once at the most, and no byte left over.
bool ReadSections(Bytes file, Sections *sections)
{
    while (!file.IsEmpty()) {
        std::uint8_t kind = 0;
        std::uint32_t size = 0;
        Bytes section;
        if (!file.Read(&kind) || !file.Read(&size) || size == 0 || !file.Take(size, &section) ||
            !sections->emplace(kind, section).second)
            return false;
    }
    return std::all_of(sections->begin(), sections->end(), [](const auto &section) {
        return section.first == kContexts || section.first == kHashes || section.first == kMessages ||
               section.first == kPluralRules || section.first == kLanguage;
    });
}

// A translation is UTF-16.
bool SkipText(Bytes *messages, bool isTranslation)
{
    std::uint32_t size = 0;
    if (!messages->Read(&size))
        return false;
    if (isTranslation && size == kNoText)
        return true;
    return (!isTranslation || size % 2 == 0) && messages->Skip(size);
}

bool SkipMessage(Bytes *messages)
{
    std::uint8_t tag = 0;
    while (messages->Read(&tag)) {
        switch (tag) {
        case kEnd:
            return true;
        case kFourBytes:
            if (!messages->Skip(4))
                return false;
            break;
        case kTranslation:
        case kSourceText:
        case kContext:
        case kComment:
            if (!SkipText(messages, tag == kTranslation))
                return false;
            break;
        default:
            return false;
        }
    }
    return false;
}

// Notes where messages begin.
bool ReadMessages(Bytes messages, std::vector<bool> *begins)
{
    begins->resize(messages.Size());
    while (!messages.IsEmpty()) {
        (*begins)[begins->size() - messages.Size()] = true;
        if (!SkipMessage(&messages))
            return false;
    }
    return true;
}

bool AreHashesSound(Bytes hashes, const std::vector<bool> &begins)
{
    std::uint32_t former = 0;
    while (!hashes.IsEmpty()) {
        std::uint32_t hash = 0;
        std::uint32_t offset = 0;
        if (!hashes.Read(&hash) || !hashes.Read(&offset) || hash < former || offset >= begins.size() ||
            !begins[offset])
            return false;
        former = hash;
    }
    return true;
}

// Whether the reader stays within the messages whatever text it is asked for.
bool AreTextsSound(Sections &sections)
{
    std::vector<bool> begins;
    return ReadMessages(sections[kMessages], &begins) && AreHashesSound(sections[kHashes], begins) &&
           sections[kHashes].IsEmpty() == sections[kMessages].IsEmpty();
}

void Append(std::uint8_t kind, const Bytes &section, std::vector<std::uint8_t> *catalogue)
{
    catalogue->push_back(kind);
    for (int shift = 24; shift >= 0; shift -= 8)
        catalogue->push_back(static_cast<std::uint8_t>(section.Size() >> shift));
    catalogue->insert(catalogue->end(), section.Begin(), section.Begin() + section.Size());
}

} // namespace

std::vector<std::uint8_t> CheckedCatalogue(const std::uint8_t *bytes, std::size_t size)
{
    if (size < kMagic.size() || !std::equal(kMagic.begin(), kMagic.end(), bytes))
        return {};
    Sections sections;
    if (!ReadSections(Bytes(bytes + kMagic.size(), size - kMagic.size()), &sections) ||
        !AreTextsSound(sections))
        return {};
    std::vector<std::uint8_t> catalogue(kMagic.begin(), kMagic.end());
    for (const auto &[kind, section] : sections) {
        if (kind != kContexts && !section.IsEmpty())
            Append(kind, section, &catalogue);
    }
    return catalogue;
}

} // namespace pba
