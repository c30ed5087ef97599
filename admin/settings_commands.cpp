// SPDX-License-Identifier: Apache-2.0
#include "admin/settings.h"

#include <filesystem>
#include <sys/stat.h>

#include "admin/failure.h"
#include "admin/scratch_file.h"
#include "settings_format/settings_encoder.h"
#include "admin/settings_json.h"
#include "admin/whole_file.h"

namespace admin {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kReadableByAll = 0644; // nothing in it is secret

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

} // namespace

void CompileSettings(const SettingsOptions &options)
{
    const std::string &input = options.input;
    std::vector<std::string> faults;
    const std::optional<pba::ConstantSettingsRecord> record = ReadSettings(ReadWholeFile(input), &faults);
    if (!record) {
        for (std::string &fault : faults)
            fault.insert(0, input + ": ");
        throw Failure(std::move(faults));
    }
    ScratchFile file(FindTarget(input, options.output));
    file.Write(pba::EncodeSettings(*record));
    fchmod(file.File(), kReadableByAll);
    file.FinishReplacing();
}

} // namespace admin
