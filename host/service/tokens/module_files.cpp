// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/module_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>

#include "base/text.h"
#include "host/log.h"

namespace host {
namespace {

constexpr char kProgram[] = "pba_host";
constexpr std::string_view kExtension = ".module";
constexpr std::size_t kMaxModules = 16;
constexpr int kMaxEntries = 256; // of a directory
constexpr std::size_t kMaxBytes = 64 * 1024;

using Settings = std::map<std::string, std::string>;

std::string Trimmed(std::string_view text)
{
    constexpr std::string_view kBlanks = " \t\r\n\f\v";
    const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
    return std::string(text.substr(first, text.find_last_not_of(kBlanks) + 1 - first));
}

// Adds what is not there yet. What is no "key: value" means nothing.
void Read(std::string_view text, Settings *settings)
{
    while (!text.empty()) {
        const std::string line = Trimmed(text.substr(0, text.find('\n')));
        text.remove_prefix(std::min(text.find('\n'), text.size() - 1) + 1);
        const std::size_t colon = line.find(':');
        if (line.starts_with('#') || colon == line.npos)
            continue;
        settings->try_emplace(Trimmed(std::string_view(line).substr(0, colon)),
                              Trimmed(std::string_view(line).substr(colon + 1)));
    }
}

// In a list with commas or blanks between.
bool NamesThisProgram(std::string_view list)
{
    while (!list.empty()) {
        const std::size_t end = std::min(list.find_first_of(", \t"), list.size());
        if (list.substr(0, end) == kProgram)
            return true;
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return false;
}

bool IsEnabled(const Settings &settings)
{
    if (const auto in = settings.find("enable-in"); in != settings.end())
        return NamesThisProgram(in->second);
    const auto in = settings.find("disable-in");
    return in == settings.end() || !NamesThisProgram(in->second);
}

// Empty when there is no module for this program.
std::string PathOf(const std::string &name, const Settings &settings)
{
    if (!IsEnabled(settings))
        return {};
    if (settings.contains("remote")) {
        Log(kLogErrors, "The PKCS#11 module " + base::Printable(name) +
                            " is not used: it lies behind a program of its own.");
        return {};
    }
    const auto module = settings.find("module");
    if (module == settings.end() || module->second.empty() || module->second.find('\0') != std::string::npos)
        return {};
    return std::filesystem::path(P11_MODULE_PATH) / module->second;
}

std::string ReadFile(const std::filesystem::path &path)
{
    std::string text(kMaxBytes, '\0');
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error)) // or it might have no end
        return {};
    std::ifstream file(path, std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return text;
}

void ReadDirectory(const char *directory, std::vector<ModuleFile> *files)
{
    std::error_code error;
    int entries = 0;
    for (std::filesystem::directory_iterator entry(directory, error), end;
         !error && entry != end && ++entries <= kMaxEntries; entry.increment(error)) {
        if (entry->path().extension() == kExtension)
            files->push_back({entry->path().stem(), ReadFile(entry->path())});
    }
}

} // namespace

std::vector<std::string> ModulesOf(const std::vector<ModuleFile> &files)
{
    std::map<std::string, Settings> configured;
    for (const ModuleFile &file : files)
        Read(file.text, &configured[file.name]);
    std::vector<std::string> paths;
    for (const auto &[name, settings] : configured) {
        std::string path = PathOf(name, settings);
        if (path.empty() || std::find(paths.begin(), paths.end(), path) != paths.end())
            continue;
        if (paths.size() == kMaxModules) {
            Log(kLogErrors, "There are more PKCS#11 modules than this program starts; name the one that "
                            "counts by --pkcs11-module.");
            break;
        }
        paths.push_back(std::move(path));
    }
    return paths;
}

std::vector<std::string> ConfiguredModules()
{
    std::vector<ModuleFile> files;
    ReadDirectory(P11_SYSTEM_CONFIGS, &files);
    ReadDirectory(P11_PACKAGE_CONFIGS, &files);
    return ModulesOf(files);
}

} // namespace host
