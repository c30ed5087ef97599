#include "commands.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.h"
#include "scratch_file.h"
#include "settings_encoder.h"
#include "settings_json.h"

namespace admin {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kMaxInputBytes = 4 * 1024 * 1024;
constexpr mode_t kReadableByAll = 0644; // nothing in it is secret

std::string ReadWhole(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(kMaxInputBytes + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!file.is_open() || file.bad())
        throw Failure(path + ": cannot be read; check the path");
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.size() > kMaxInputBytes)
        throw Failure(path + ": larger than 4 MiB; these are no settings");
    return text;
}

// Only a file gives way to the new one; behind a link it is the file that does.
std::string FindTarget(const std::string &input, const std::string &output)
{
    std::error_code error;
    const fs::file_status status = fs::status(output, error);
    if (!fs::exists(status))
        return output;
    if (!fs::is_regular_file(status))
        throw Failure(output + ": exists and is no file; name a file to write");
    if (fs::equivalent(input, output, error))
        throw Failure(output + ": is the input, too; name another file to write", kExitUsage);
    return fs::canonical(output).string();
}

void WriteWhole(const ScratchFile &file, const std::string &path, const std::string &bytes)
{
    std::size_t written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(file.File(), bytes.data() + written, bytes.size() - written);
        if (count <= 0)
            throw Failure(path + ": cannot be written: " + std::strerror(errno));
        written += static_cast<std::size_t>(count);
    }
}

} // namespace

void CompileSettings(const std::string &input, const std::string &output)
{
    std::vector<std::string> faults;
    const std::optional<pba::ConstantSettingsRecord> record = ReadSettings(ReadWhole(input), &faults);
    if (!record) {
        for (std::string &fault : faults)
            fault.insert(0, input + ": ");
        throw Failure(std::move(faults));
    }
    ScratchFile file(FindTarget(input, output));
    WriteWhole(file, output, EncodeSettings(*record));
    fchmod(file.File(), kReadableByAll);
    file.FinishReplacing();
}

} // namespace admin
