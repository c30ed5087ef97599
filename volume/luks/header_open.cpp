// SPDX-License-Identifier: Apache-2.0
#include "volume/luks/header.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <libcryptsetup.h>

namespace volume {
namespace {

constexpr std::uint64_t kMetadataBytes = 64 * 1024; // room for 31 users with an object each
constexpr char kCipher[] = "aes";
constexpr char kCipherMode[] = "xts-plain64";
constexpr std::size_t kVolumeKeyBytes = 64;

constexpr std::size_t kMagicBytes = 6;
constexpr char kFirstMagic[] = "LUKS\xba\xbe";
constexpr char kSecondMagic[] = "SKUL\xba\xbe";
// Where the second copy of a header may begin.
constexpr std::array<off_t, 9> kSecondOffsets = {0x4000,  0x8000,   0x10000,  0x20000, 0x40000,
                                                 0x80000, 0x100000, 0x200000, 0x400000};

bool HasMagic(int file, const char *magic, off_t offset, int version)
{
    std::array<unsigned char, kMagicBytes + 2> start{};
    return pread(file, start.data(), start.size(), offset) == static_cast<ssize_t>(start.size()) &&
           std::memcmp(start.data(), magic, kMagicBytes) == 0 &&
           start[kMagicBytes] * 256 + start[kMagicBytes + 1] == version;
}

bool LooksLikeLuks2(int file)
{
    if (HasMagic(file, kFirstMagic, 0, 2))
        return true;
    for (off_t offset : kSecondOffsets) {
        if (HasMagic(file, kSecondMagic, offset, 2))
            return true;
    }
    return false;
}

// libcryptsetup locks devices by files of its own, and where it may not it takes the header for damaged.
bool MayLockDevices()
{
    return access("/run/cryptsetup", W_OK | X_OK) == 0 || (errno == ENOENT && access("/run", W_OK) == 0);
}

// Whether something is there that could be a volume; libcryptsetup answers all of it with one code. Opening
// does not wait for the other end of a fifo.
Error Probe(const std::string &path, bool *looksLikeLuks2)
{
    struct stat status;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return errno == EACCES || errno == EPERM                   ? Error::NoAccess
               : errno == ENXIO || errno == ENODEV || errno == EIO ? Error::Vanished
                                                                   : Error::NotFound;
    const bool usable = fstat(file, &status) == 0 && (S_ISREG(status.st_mode) || S_ISBLK(status.st_mode));
    *looksLikeLuks2 = usable && LooksLikeLuks2(file);
    // Of a failing disk nobody can say what it is; making a new volume there would lose the old one.
    char byte = 0;
    const bool unreadable = usable && !*looksLikeLuks2 && pread(file, &byte, 1, 0) < 0;
    close(file);
    if (usable && S_ISBLK(status.st_mode) && !MayLockDevices())
        return Error::NoAccess;
    return unreadable ? Error::HeaderUnreadable : usable ? Error::None : Error::NotLuks2;
}

// The library's code for that is also the one for a file that ends too early.
bool IsReadable(const std::string &path)
{
    std::array<char, kMetadataBytes> block;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    ssize_t size = file < 0 ? -1 : 1;
    for (off_t at = 0; size > 0 && at < 2 * kSecondOffsets.back(); at += size)
        size = pread(file, block.data(), block.size(), at);
    if (file >= 0)
        close(file);
    return size >= 0;
}

void KeepDetail(int level, const char *message, void *detail)
{
    const auto kept = static_cast<std::string *>(detail);
    if (level != CRYPT_LOG_ERROR || !kept || !kept->empty())
        return;
    std::string_view words(message);
    while (!words.empty() && (words.back() == '\n' || words.back() == '.'))
        words.remove_suffix(1);
    try {
        kept->assign(words);
    } catch (const std::bad_alloc &) { // may not pass through the library, and the words are not vital
    }
}

} // namespace

Error Header::Connect()
{
    // Only our own objects count; code from plug-ins has no business here.
    crypt_token_external_disable();
    // Without a callback the library writes to the standard streams.
    crypt_set_log_callback(nullptr, KeepDetail, nullptr);
    const int result = crypt_init(&m_device, m_path.c_str());
    if (result < 0)
        return Fault(result);
    crypt_set_log_callback(m_device, KeepDetail, &m_lastDetail);
    return Error::None;
}

Error Header::Open(const std::string &path, std::unique_ptr<Header> *header)
{
    bool looksLikeLuks2 = false;
    if (const Error error = Probe(path, &looksLikeLuks2); error != Error::None)
        return error;
    if (!looksLikeLuks2)
        return Error::NotLuks2;
    std::unique_ptr<Header> opened(new Header(path));
    if (const Error error = opened->Connect(); error != Error::None)
        return error;
    if (const Error error = opened->Load(); error != Error::None)
        return error;
    *header = std::move(opened);
    return Error::None;
}

// Also takes the place of what was read before.
Error Header::Load()
{
    const int result = crypt_load(m_device, CRYPT_LUKS2, nullptr);
    if (result >= 0)
        return Error::None;
    const Error error = Fault(result);
    const bool damaged =
        result == -EINVAL || error == Error::Failed || (error == Error::DiskFault && IsReadable(m_path));
    return damaged ? Error::HeaderUnreadable : error;
}

Error Header::CheckWritable() const
{
    int file = -1;
    const Error error = OpenForWriting(m_path, &file);
    if (error == Error::None)
        close(file);
    return error == Error::None ? CheckChangeable(m_device) : error;
}

// A change within a change is part of the outer one, and it too starts from what the header holds now.
Error Header::BeginChange(std::shared_ptr<HeaderWriter> *writer, std::chrono::milliseconds patience)
{
    Error error = Error::None;
    *writer = m_writer.lock();
    if (!*writer) {
        m_lastDetail.clear();
        *writer = std::make_shared<HeaderWriter>(m_device, m_path);
        m_writer = *writer;
        error = (*writer)->Lock(patience);
    }
    if (error == Error::None)
        error = Load();
    return error == Error::None ? CheckChangeable(m_device) : error;
}

Error Header::Create(const std::string &path, std::unique_ptr<Header> *header)
{
    std::unique_ptr<Header> created(new Header(path));
    if (const Error error = created->Connect(); error != Error::None)
        return error;
    crypt_params_luks2 params{}; // a sector size of 0 lets the library choose what suits the device
    int result = crypt_set_metadata_size(created->m_device, kMetadataBytes, 0);
    if (result >= 0)
        result = crypt_format(created->m_device, CRYPT_LUKS2, kCipher, kCipherMode, nullptr, nullptr,
                              kVolumeKeyBytes, &params);
    if (result < 0)
        return created->Fault(result);
    *header = std::move(created);
    return Error::None;
}

Header::~Header()
{
    crypt_free(m_device);
}

std::string Header::Uuid() const
{
    const char *uuid = crypt_get_uuid(m_device);
    return uuid ? uuid : "";
}

} // namespace volume
