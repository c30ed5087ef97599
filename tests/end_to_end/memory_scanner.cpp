// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program: when it ends, looks through all memory that it could write to for pieces of
// secrets, and writes what it has found to a file. SCANNER_CANARIES names a file with a secret a line,
// masked, as pairs of hexadecimal digits, and masked they stay here, so that the scanner does not find
// itself; SCANNER_REPORT names the file for the findings.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr std::uint8_t kMask = 0x5A;
// As many characters in a row betray a secret; of a long one that is a key it takes more to be no chance.
constexpr std::size_t kPiece = 5;
constexpr std::size_t kPieceOfKey = 8;
constexpr std::size_t kKey = 32;
constexpr std::size_t kPieceRoom = 2 * kPieceOfKey; // in UTF-16
constexpr std::size_t kChunk = 64 * 1024;

struct Piece
{
    std::uint8_t masked[kPieceOfKey];
    std::size_t size;
    const Piece *next;
};
Piece s_pieces[1024];
std::size_t s_count = 0;
const Piece *s_beginning[256]; // by the first character

void ReadCanaries(std::FILE *file)
{
    char line[512];
    while (file && std::fgets(line, sizeof line, file)) {
        std::uint8_t masked[sizeof line / 2];
        std::size_t length = 0;
        for (unsigned byte = 0; std::sscanf(line + 2 * length, "%2x", &byte) == 1;)
            masked[length++] = static_cast<std::uint8_t>(byte);
        const std::size_t size = length < kKey ? kPiece : kPieceOfKey;
        for (std::size_t i = 0; i + size <= length && s_count < std::size(s_pieces); ++i) {
            const Piece *&others = s_beginning[masked[i] ^ kMask];
            Piece &piece = s_pieces[s_count++];
            std::copy_n(masked + i, size, piece.masked);
            piece.size = size;
            piece.next = others;
            others = &piece;
        }
    }
}

// Whether the piece stands there, its characters `stride` bytes apart: 1 for UTF-8, 2 for UTF-16.
bool IsPiece(const std::uint8_t *place, std::size_t room, std::size_t stride, const Piece &piece)
{
    if (room < stride * piece.size)
        return false;
    for (std::size_t i = 0; i < piece.size; ++i) {
        if ((place[i * stride] ^ kMask) != piece.masked[i] || (stride == 2 && place[2 * i + 1] != 0))
            return false;
    }
    return true;
}

bool HoldsPiece(const std::uint8_t *place, std::size_t room)
{
    for (const Piece *piece = s_beginning[*place]; piece; piece = piece->next) {
        if (IsPiece(place, room, 1, *piece) || IsPiece(place, room, 2, *piece))
            return true;
    }
    return false;
}

// Looks at copies: a thread that is ending takes its memory away at any moment.
void Scan(std::uintptr_t begin, std::uintptr_t end, const char *what, std::FILE *report)
{
    static std::uint8_t s_copy[kChunk + kPieceRoom];
    for (std::uintptr_t chunk = begin; chunk < end; chunk += kChunk) {
        const iovec original{reinterpret_cast<void *>(chunk), std::min(end - chunk, sizeof s_copy)};
        const iovec copy{s_copy, sizeof s_copy};
        const ssize_t copied = process_vm_readv(getpid(), &copy, 1, &original, 1, 0);
        const std::size_t size = copied < 0 ? 0 : static_cast<std::size_t>(copied);
        for (std::size_t i = 0; i < std::min(size, kChunk); ++i) {
            if (HoldsPiece(s_copy + i, size - i))
                std::fprintf(report, "%lx in %s", chunk + i, what);
        }
    }
    explicit_bzero(s_copy, sizeof s_copy);
}

struct Scanner
{
    ~Scanner()
    {
        ReadCanaries(std::fopen(std::getenv("SCANNER_CANARIES"), "r"));
        std::FILE *maps = std::fopen("/proc/self/maps", "r");
        std::FILE *report = std::fopen(std::getenv("SCANNER_REPORT"), "w");
        char line[512];
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        while (maps && report && std::fgets(line, sizeof line, maps)) {
            if (std::strstr(line, " rw") && std::sscanf(line, "%lx-%lx", &begin, &end) == 2)
                Scan(begin, end, line, report);
        }
        if (maps && report)
            std::fputs(s_count > 0 ? "scanned\n" : "nothing to look for\n", report);
        if (report)
            std::fclose(report);
    }
};

const Scanner s_scanner;

} // namespace
