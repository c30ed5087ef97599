#include "commands.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

#include "failure.h"
#include "scratch_file.h"
#include "settings_encoder.h"
#include "settings_json.h"

namespace admin {
namespace {

constexpr mode_t kReadableByAll = 0644; // nothing in it is secret

std::string ReadWhole(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad())
        throw Failure(path + ": cannot be read; check the path");
    return text;
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

std::string JoinLines(const std::string &path, const std::vector<std::string> &faults)
{
    std::string lines;
    for (const std::string &fault : faults)
        lines += (lines.empty() ? "" : "\npba_admin: ") + path + ": " + fault;
    return lines;
}

} // namespace

void CompileSettings(const std::string &input, const std::string &output)
{
    std::vector<std::string> faults;
    const std::optional<pba::ConstantSettingsRecord> record = ReadSettings(ReadWhole(input), &faults);
    if (!record)
        throw Failure(JoinLines(input, faults));
    ScratchFile file(output);
    WriteWhole(file, output, EncodeSettings(*record));
    fchmod(file.File(), kReadableByAll);
    file.FinishReplacing();
}

} // namespace admin
