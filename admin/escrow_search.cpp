// SPDX-License-Identifier: Apache-2.0
#include "admin/escrow_search.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iostream>
#include <optional>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "admin/failure.h"
#include "admin/mapped_file.h"
#include "admin/progress.h"
#include "admin/scratch_file.h"
#include "base/text.h"
#include "volume/luks/name_comparison.h"

namespace admin {
namespace {

using recovery::EscrowRecord;

constexpr std::uint64_t kMagic = 0x3249534542415045;

// Which file an index was made of, and of how many records. In the computer's own byte order: an index is
// never moved.
struct Stamp
{
    std::uint64_t magic = kMagic;
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modified[2] = {}; // seconds and nanoseconds
    std::int64_t changed[2] = {};
    std::uint64_t records = 0;

    bool operator==(const Stamp &) const = default;
};

using Place = std::pair<std::string, std::uint64_t>; // a folded name and an offset

class Escrow
{
public:
    explicit Escrow(const std::string &path)
        : m_path(path)
        , m_file(path)
    {
    }

    const std::string &Path() const { return m_path; }
    std::string_view Text() const { return m_file.View(); }
    Stamp StampOf(std::uint64_t records) const
    {
        const struct stat &status = m_file.Status();
        return {kMagic,
                status.st_dev,
                status.st_ino,
                status.st_size,
                {status.st_mtim.tv_sec, status.st_mtim.tv_nsec},
                {status.st_ctim.tv_sec, status.st_ctim.tv_nsec},
                records};
    }

    // Nothing where no record begins.
    std::optional<EscrowRecord> RecordAt(std::size_t offset) const
    {
        return offset < Text().size() ? recovery::ParseRecord(LineAt(Text(), offset)) : std::nullopt;
    }

private:
    std::string m_path;
    MappedFile m_file;
};

using Index = std::vector<std::uint64_t>; // offsets in the escrow

Index SortRecords(const Escrow &escrow)
{
    std::vector<Place> places;
    for (std::size_t offset = 0; offset < escrow.Text().size();) {
        const std::string_view line = LineAt(escrow.Text(), offset);
        if (const auto record = recovery::ParseRecord(line))
            places.emplace_back(volume::FoldName(record->machine), offset);
        offset += line.size() + 1;
    }
    std::sort(places.begin(), places.end());
    Index index;
    for (const auto &[machine, offset] : places)
        index.push_back(offset);
    return index;
}

std::string IndexPath(const Escrow &escrow)
{
    return escrow.Path() + ".index";
}

std::optional<Index> ReadIndex(const Escrow &escrow)
{
    if (access(IndexPath(escrow).c_str(), F_OK) != 0)
        return std::nullopt;
    const MappedFile file(IndexPath(escrow));
    std::string_view bytes = file.View();
    Stamp stamp;
    if (bytes.size() < sizeof stamp)
        return std::nullopt;
    std::memcpy(&stamp, bytes.data(), sizeof stamp);
    bytes.remove_prefix(sizeof stamp);
    const std::size_t records = bytes.size() / sizeof(std::uint64_t);
    if (!(stamp == escrow.StampOf(records)))
        return std::nullopt;
    Index index(records);
    if (records > 0)
        std::memcpy(index.data(), bytes.data(), records * sizeof(std::uint64_t));
    return index;
}

template <typename Value>
std::string_view BytesOf(const Value *values, std::size_t count)
{
    return {reinterpret_cast<const char *>(values), count * sizeof(Value)};
}

void WriteIndex(const Escrow &escrow, const Index &index)
{
    const Stamp stamp = escrow.StampOf(index.size());
    ScratchFile file(IndexPath(escrow));
    file.Write(BytesOf(&stamp, 1));
    file.Write(BytesOf(index.data(), index.size()));
    file.FinishReplacing();
}

Index FindIndex(const Escrow &escrow)
{
    std::optional<Index> index;
    try {
        index = ReadIndex(escrow);
        if (index)
            return std::move(*index);
        const Progress progress("making the index of the escrow");
        index = SortRecords(escrow);
        WriteIndex(escrow, *index);
    } catch (const Failure &failure) {
        std::cerr << "pba_admin: note: " << base::Printable(failure.Lines().front())
                  << "; without it each search reads the whole escrow\n";
    }
    return index ? std::move(*index) : SortRecords(escrow);
}

} // namespace

std::vector<EscrowRecord> FindRecords(const std::string &path, const std::string &machine)
{
    const Escrow escrow(path);
    const Index index = FindIndex(escrow);
    const std::string folded = volume::FoldName(machine);
    const auto nameAt = [&](std::uint64_t offset) {
        const std::optional<EscrowRecord> record = escrow.RecordAt(offset);
        return record ? volume::FoldName(record->machine) : std::string();
    };
    auto place = std::lower_bound(
        index.begin(), index.end(), folded,
        [&](std::uint64_t offset, const std::string &name) { return nameAt(offset) < name; });
    std::vector<EscrowRecord> records;
    for (; place != index.end() && nameAt(*place) == folded; ++place) {
        if (std::optional<EscrowRecord> record = escrow.RecordAt(*place))
            records.push_back(std::move(*record));
    }
    std::reverse(records.begin(), records.end());
    return records;
}

} // namespace admin
