// Preloaded into a program: when it ends, looks through all memory that it could write to for pieces of a
// secret, and appends what it has found to a file. SCANNER_SECRET holds the secret masked, as pairs of
// hexadecimal digits, and masked it stays here, so that the scanner does not find itself; SCANNER_REPORT
// names the file.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr std::uint8_t kMask = 0x5A;
// As many characters in a row betray a secret.
constexpr std::size_t kPiece = 5;
constexpr std::size_t kLongest = 64;
constexpr std::size_t kPieceRoom = 2 * kPiece; // in UTF-16
constexpr std::size_t kChunk = 64 * 1024;

std::uint8_t s_masked[kLongest];
std::size_t s_length = 0;
bool s_begins[256]; // a piece

void ReadSecret(const char *hex)
{
    unsigned byte = 0;
    for (; s_length < kLongest && std::sscanf(hex, "%2x", &byte) == 1; hex += 2)
        s_masked[s_length++] = static_cast<std::uint8_t>(byte);
    for (std::size_t i = 0; i + kPiece <= s_length; ++i)
        s_begins[s_masked[i] ^ kMask] = true;
}

// Whether `place` holds the piece, its characters `stride` bytes apart: 1 for UTF-8, 2 for UTF-16.
bool IsPiece(const std::uint8_t *place, std::size_t stride, const std::uint8_t *masked)
{
    for (std::size_t i = 0; i < kPiece; ++i) {
        if ((place[i * stride] ^ kMask) != masked[i] || (stride == 2 && place[2 * i + 1] != 0))
            return false;
    }
    return true;
}

bool HoldsPiece(const std::uint8_t *place, std::size_t room)
{
    for (std::size_t stride = 1; stride <= 2 && room >= stride * kPiece; ++stride) {
        for (std::size_t piece = 0; piece + kPiece <= s_length; ++piece) {
            if (IsPiece(place, stride, s_masked + piece))
                return true;
        }
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
            if (s_begins[s_copy[i]] && HoldsPiece(s_copy + i, size - i))
                std::fprintf(report, "%lx in %s", chunk + i, what);
        }
    }
    explicit_bzero(s_copy, sizeof s_copy);
}

struct Scanner
{
    Scanner() { ReadSecret(std::getenv("SCANNER_SECRET")); }
    ~Scanner()
    {
        std::FILE *maps = std::fopen("/proc/self/maps", "r");
        std::FILE *report = std::fopen(std::getenv("SCANNER_REPORT"), "a");
        char line[512];
        std::uintptr_t begin = 0;
        std::uintptr_t end = 0;
        while (maps && report && std::fgets(line, sizeof line, maps)) {
            if (std::strstr(line, " rw") && std::sscanf(line, "%lx-%lx", &begin, &end) == 2)
                Scan(begin, end, line, report);
        }
        if (maps && report)
            std::fputs("scanned\n", report);
        if (report)
            std::fclose(report);
    }
};

const Scanner s_scanner;

} // namespace
