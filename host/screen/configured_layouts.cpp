// SPDX-License-Identifier: Apache-2.0
#include "host/screen/configured_layouts.h"

#include <algorithm>
#include <set>

#include <sys/stat.h>
#include <unistd.h>

#include "pbe/files.h"
#include "pbe/keyboard.h"
#include "settings_format/settings_decoder.h"
#include "base/text.h"

namespace host {
namespace {

constexpr char16_t kPath[] = u"\\pba\\settings.bin";
constexpr off_t kMaxBytes = 1024 * 1024;

std::vector<std::uint8_t> ReadSettings()
{
    int file = -1;
    if (kro::Failed(PbeOpenFileForReading(kPath, &file)))
        return {};
    struct stat status
    {
    };
    std::vector<std::uint8_t> bytes;
    if (fstat(file, &status) == 0 && status.st_size <= kMaxBytes)
        bytes.resize(static_cast<std::size_t>(status.st_size));
    const ssize_t size = read(file, bytes.data(), bytes.size());
    close(file);
    bytes.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return bytes;
}

} // namespace

std::vector<pba::KeyboardLayout> ConfiguredLayouts()
{
    pba::SettingsStream stream{ReadSettings()};
    pba::ConstantSettingsRecord record;
    if (kro::Failed(pba::DecodeSettings(&stream, &record)))
        return {};
    std::vector<pba::KeyboardLayout> layouts;
    for (const pba::InputLanguage &language : record.prebootSettings.inputLanguages)
        layouts.insert(layouts.end(), language.layouts.begin(), language.layouts.end());
    return layouts;
}

std::u16string LayoutsThatCannotType(std::u16string_view text)
{
    std::u16string names;
    std::set<std::u16string> named; // several languages may have the same layout
    for (const pba::KeyboardLayout &layout : ConfiguredLayouts()) {
        bool canType = true;
        if (kro::Failed(PbeCanTypeText(layout.layoutId, text.data(), text.size(), &canType)) || canType ||
            !named.insert(layout.name).second)
            continue;
        names += names.empty() ? u"" : u", ";
        names += layout.name;
    }
    return names;
}

std::u16string LayoutName(std::uint32_t layoutId)
{
    const std::vector<pba::KeyboardLayout> layouts = ConfiguredLayouts();
    const auto found = std::find_if(layouts.begin(), layouts.end(), [&](const pba::KeyboardLayout &layout) {
        return layout.layoutId == layoutId;
    });
    if (found != layouts.end())
        return found->name;
    const char *name = PbeGetKeyboardLayoutName(layoutId);
    return name ? base::ToUtf16(name) : std::u16string();
}

} // namespace host
