// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program and those that it starts: when one ends, looks through all memory that it could
// write to for pieces of secrets, and writes what it has found to a file. SCANNER_CANARIES names a file with
// a secret a line, masked, as pairs of hexadecimal digits, and masked they stay here, so that the scanner
// does not find itself; the findings are in SCANNER_REPORT.PROGRAM.PROCESS. All files are opened at once, for
// a program may confine itself.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include <fcntl.h>
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

std::FILE *Open(const char *path, const char *mode)
{
    std::FILE *file = std::fopen(path, mode);
    if (!file) {
        std::perror(path);
        std::abort();
    }
    return file;
}

std::FILE *OpenReport()
{
    char path[512];
    std::snprintf(path, sizeof path, "%s.%s.%d", std::getenv("SCANNER_REPORT"), program_invocation_short_name,
                  getpid());
    return Open(path, "we");
}

void ReadCanaries(std::FILE *file)
{
    char line[512];
    while (std::fgets(line, sizeof line, file)) {
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
void Scan(std::uintptr_t begin, std::uintptr_t end, int memory, const char *what, std::FILE *report)
{
    static std::uint8_t s_copy[kChunk + kPieceRoom];
    for (std::uintptr_t chunk = begin; chunk < end; chunk += kChunk) {
        const ssize_t copied =
            pread(memory, s_copy, std::min(end - chunk, sizeof s_copy), static_cast<off_t>(chunk));
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
        ReadCanaries(canaries);
        char line[512];
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        while (std::fgets(line, sizeof line, maps)) {
            if (std::strstr(line, " rw") && std::sscanf(line, "%lx-%lx", &begin, &end) == 2)
                Scan(begin, end, memory, line, report);
        }
        std::fputs(s_count > 0 ? "scanned\n" : "nothing to look for\n", report);
        std::fclose(report);
    }

    std::FILE *canaries = Open(std::getenv("SCANNER_CANARIES"), "re");
    std::FILE *maps = Open("/proc/self/maps", "re");
    int memory = open("/proc/self/mem", O_RDONLY | O_CLOEXEC);
    std::FILE *report = OpenReport();
};

const Scanner s_scanner;

} // namespace
