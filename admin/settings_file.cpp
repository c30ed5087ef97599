// SPDX-License-Identifier: Apache-2.0
#include "admin/settings_file.h"

#include <algorithm>

#include "settings_format/settings_decoder.h"
#include "admin/settings_findings.h"
#include "admin/settings_json.h"
#include "admin/whole_file.h"

namespace admin {
namespace {

// Compiled settings hold zeros; no text does.
bool IsCompiled(const std::string &path, const std::string &bytes)
{
    return path.ends_with(".bin") || (!path.ends_with(".json") && bytes.find('\0') != std::string::npos);
}

SettingsFile ReadCompiled(const std::string &bytes)
{
    pba::SettingsStream stream{{bytes.begin(), bytes.end()}, 0};
    pba::ConstantSettingsRecord record;
    SettingsFile file;
    const kro::result_t result = pba::DecodeSettings(&stream, &record);
    if (result == kro::kInvalidVersion)
        file.findings.push_back({true, kWholeFile, "is not of version 1; these are no compiled settings"});
    else if (kro::Failed(result))
        file.findings.push_back(
            {true, kWholeFile, "ends too early, at byte " + std::to_string(stream.cursor)});
    else
        file.record = std::move(record);
    if (file.record && stream.cursor < stream.bytes.size())
        file.findings.push_back({false, kWholeFile, "goes on behind the settings"});
    return file;
}

SettingsFile ReadJson(const std::string &text)
{
    std::vector<std::string> faults;
    SettingsFile file{ReadSettings(text, &faults), {}};
    for (const std::string &fault : faults) {
        const std::size_t colon = fault.find(": ");
        file.findings.push_back({true, fault.substr(0, colon), fault.substr(colon + 2)});
    }
    return file;
}

} // namespace

bool SettingsFile::HasFaults() const
{
    return std::any_of(findings.begin(), findings.end(), [](const Finding &one) { return one.isFault; });
}

SettingsFile ReadSettingsFile(const std::string &path)
{
    const std::string bytes = ReadWholeFile(path);
    SettingsFile file = IsCompiled(path, bytes) ? ReadCompiled(bytes) : ReadJson(bytes);
    if (file.record)
        FindInRecord(*file.record, &file.findings);
    return file;
}

} // namespace admin
