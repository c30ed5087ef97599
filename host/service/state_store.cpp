// SPDX-License-Identifier: Apache-2.0
#include "host/service/state_store.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "pbe/files.h"
#include "base/durable_name.h"
#include "volume/luks/write_lock.h"

namespace host {
namespace {

constexpr char16_t kPath[] = u"\\pba\\state.json";
constexpr std::size_t kMaxFileBytes = 4096; // names of 256 bytes, escaped, and the rest

std::string FileName()
{
    kro::string_t name;
    return kro::Failed(PbeGetFilePath(kPath, &name)) ? std::string() : std::string(name.View());
}

bool WriteAll(int file, std::string_view bytes)
{
    return write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()) && fsync(file) == 0;
}

bool WriteFile(const std::string &name, std::string_view bytes)
{
    const int file = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                          S_IRUSR | S_IWUSR);
    if (file < 0)
        return false;
    const bool written = WriteAll(file, bytes);
    return close(file) == 0 && written;
}

// A root without settings or texts has no such directory yet; guessing is to be slowed down there, too.
bool MakeDirectory(const std::filesystem::path &directory)
{
    constexpr mode_t kReadableByAll = 0755;
    if (mkdir(directory.c_str(), kReadableByAll) != 0)
        return errno == EEXIST;
    base::MakeNameDurable(directory);
    return true;
}

} // namespace

LoginState FileStateStore::Read()
{
    int file = -1;
    if (kro::Failed(PbeOpenFileForReading(kPath, &file)))
        return {};
    std::string text(kMaxFileBytes, '\0');
    const ssize_t size = read(file, text.data(), text.size());
    close(file);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return DecodeLoginState(text).value_or(LoginState{});
}

bool FileStateStore::Update(const Change &change, std::chrono::milliseconds patience)
{
    const std::string name = FileName();
    const std::string fresh = name + ".new";
    const std::filesystem::path directory = std::filesystem::path(name).parent_path();
    volume::WriteLock lock;
    // A file system that knows no locks must do without.
    if (name.empty() || !MakeDirectory(directory) ||
        lock.TakeDirectory(directory, patience) == volume::Error::Busy)
        return false;
    const std::optional<LoginState> state = change(Read());
    if (!state)
        return true;
    if (!WriteFile(fresh, EncodeLoginState(*state)) || std::rename(fresh.c_str(), name.c_str()) != 0)
        return false;
    base::MakeNameDurable(name);
    return true;
}

LoginState HeaderStateStore::Read()
{
    const std::vector<volume::Object> objects = m_header.Objects(kStateObjectType);
    return objects.empty() ? LoginState{} : DecodeLoginState(objects.front().json).value_or(LoginState{});
}

bool HeaderStateStore::Update(const Change &change, std::chrono::milliseconds patience)
{
    return m_header.Change([&] { return WriteObject(change(Read())); }, patience) == volume::Error::None;
}

// Where the object stands is looked up under the lock: its number may be another object's by now.
volume::Error HeaderStateStore::WriteObject(const std::optional<LoginState> &state)
{
    if (!state)
        return volume::Error::None;
    const std::string json = EncodeLoginState(*state);
    const std::vector<volume::Object> objects = m_header.Objects(kStateObjectType);
    int number = objects.empty() ? -1 : objects.front().number;
    const volume::Error error =
        objects.empty() ? m_header.CheckRoom({0, 1, json.size()}) : volume::Error::None;
    return error == volume::Error::None ? m_header.WriteObject(json, &number) : error;
}

} // namespace host
