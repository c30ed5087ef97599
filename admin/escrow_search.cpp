#include "admin/escrow_search.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <optional>
#include <string_view>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "admin/failure.h"
#include "admin/scratch_file.h"
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

// Open for reading, and kept from growing meanwhile.
class Escrow
{
public:
    explicit Escrow(const std::string &path)
        : m_path(path)
        , m_file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
        const int error = m_file < 0 ? errno : Map();
        if (error == 0)
            return;
        close(m_file);
        throw Failure(path + ": cannot be read: " + std::strerror(error));
    }
    ~Escrow()
    {
        munmap(m_bytes, m_size);
        close(m_file);
    }
    Escrow(const Escrow &) = delete;
    Escrow &operator=(const Escrow &) = delete;

    const std::string &Path() const { return m_path; }
    Stamp StampOf(std::uint64_t records) const
    {
        Stamp stamp = m_stamp;
        stamp.records = records;
        return stamp;
    }

    // Nothing behind the end of the file. The last line may lack its own end: an editor may have cut it off.
    std::optional<std::string_view> LineAt(std::size_t offset) const
    {
        const std::string_view text(static_cast<const char *>(m_bytes), m_size);
        return offset < m_size ? std::optional(text.substr(offset, text.find('\n', offset) - offset))
                               : std::nullopt;
    }
    // Nothing where no record begins.
    std::optional<EscrowRecord> RecordAt(std::size_t offset) const
    {
        const auto line = LineAt(offset);
        return line ? recovery::ParseRecord(*line) : std::nullopt;
    }

private:
    // 0 or an errno value.
    int Map()
    {
        struct stat status;
        if (flock(m_file, LOCK_SH) != 0 || fstat(m_file, &status) != 0)
            return errno;
        if (!S_ISREG(status.st_mode))
            return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
        m_stamp = {kMagic,
                   status.st_dev,
                   status.st_ino,
                   status.st_size,
                   {status.st_mtim.tv_sec, status.st_mtim.tv_nsec},
                   {status.st_ctim.tv_sec, status.st_ctim.tv_nsec},
                   0};
        m_size = static_cast<std::size_t>(status.st_size);
        if (m_size == 0)
            return 0;
        m_bytes = mmap(nullptr, m_size, PROT_READ, MAP_PRIVATE, m_file, 0);
        return m_bytes == MAP_FAILED ? errno : 0;
    }

    std::string m_path;
    int m_file;
    Stamp m_stamp;
    void *m_bytes = nullptr;
    std::size_t m_size = 0;
};

using Index = std::vector<std::uint64_t>; // offsets in the escrow

Index SortRecords(const Escrow &escrow)
{
    std::vector<Place> places;
    std::size_t offset = 0;
    while (const auto line = escrow.LineAt(offset)) {
        if (const auto record = recovery::ParseRecord(*line))
            places.emplace_back(volume::FoldName(record->machine), offset);
        offset += line->size() + 1;
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
    std::ifstream file(IndexPath(escrow), std::ios::binary | std::ios::ate);
    const auto size = static_cast<std::size_t>(std::max<std::streamoff>(file.tellg(), 0));
    Stamp stamp;
    if (size < sizeof stamp || !file.seekg(0).read(reinterpret_cast<char *>(&stamp), sizeof stamp) ||
        !(stamp == escrow.StampOf((size - sizeof stamp) / sizeof(std::uint64_t))))
        return std::nullopt;
    Index index(stamp.records);
    file.read(reinterpret_cast<char *>(index.data()),
              static_cast<std::streamsize>(index.size() * sizeof(std::uint64_t)));
    return file ? std::optional(std::move(index)) : std::nullopt;
}

void WriteIndex(const Escrow &escrow, const Index &index)
{
    try {
        ScratchFile file(IndexPath(escrow));
        std::ofstream stream(file.Path(), std::ios::binary);
        const Stamp stamp = escrow.StampOf(index.size());
        stream.write(reinterpret_cast<const char *>(&stamp), sizeof stamp);
        stream.write(reinterpret_cast<const char *>(index.data()),
                     static_cast<std::streamsize>(index.size() * sizeof(std::uint64_t)));
        stream.close();
        if (!stream)
            throw Failure(IndexPath(escrow) + ": cannot be written");
        file.FinishReplacing();
    } catch (const Failure &failure) {
        std::cerr << "pba_admin: note: " << failure.Lines().front()
                  << "; without it each search reads the whole escrow\n";
    }
}

} // namespace

std::vector<EscrowRecord> FindRecords(const std::string &path, const std::string &machine)
{
    const Escrow escrow(path);
    std::optional<Index> index = ReadIndex(escrow);
    if (!index) {
        index = SortRecords(escrow);
        WriteIndex(escrow, *index);
    }
    const std::string folded = volume::FoldName(machine);
    const auto nameAt = [&](std::uint64_t offset) {
        const std::optional<EscrowRecord> record = escrow.RecordAt(offset);
        return record ? volume::FoldName(record->machine) : std::string();
    };
    auto place = std::lower_bound(
        index->begin(), index->end(), folded,
        [&](std::uint64_t offset, const std::string &name) { return nameAt(offset) < name; });
    std::vector<EscrowRecord> records;
    for (; place != index->end() && nameAt(*place) == folded; ++place)
        records.push_back(*escrow.RecordAt(*place));
    std::reverse(records.begin(), records.end());
    return records;
}

} // namespace admin
