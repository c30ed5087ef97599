// SPDX-License-Identifier: Apache-2.0
#include "settings_format/settings_encoder.h"

#include <concepts>
#include <string_view>

namespace pba {
namespace {

constexpr std::uint16_t kVersion = 1;

class Writer
{
public:
    // Little-endian.
    template <std::unsigned_integral Number>
    void Put(Number number)
    {
        for (unsigned shift = 0; shift < 8 * sizeof(Number); shift += 8)
            m_bytes.push_back(static_cast<char>((number >> shift) & 0xFF));
    }
    void PutCount(std::size_t count) { Put(static_cast<std::uint32_t>(count)); }
    void Put(std::u16string_view text)
    {
        PutCount(text.size());
        for (char16_t unit : text)
            Put(static_cast<std::uint16_t>(unit));
    }
    void Put(const Hotkey &hotkey)
    {
        Put(hotkey.modifiers);
        Put(hotkey.key);
    }

    std::string Take() { return std::move(m_bytes); }

private:
    std::string m_bytes;
};

void PutLanguage(Writer *writer, const InputLanguage &language)
{
    writer->Put(language.languageId);
    writer->Put(language.name);
    writer->PutCount(language.layouts.size());
    for (const KeyboardLayout &layout : language.layouts) {
        writer->Put(layout.layoutId);
        writer->Put(layout.name);
        writer->Put(layout.selectHotkey);
    }
}

} // namespace

std::string EncodeSettings(const ConstantSettingsRecord &record)
{
    const PrebootSettings &settings = record.prebootSettings;
    Writer writer;
    writer.Put(kVersion);
    writer.Put(record.hostName);
    writer.PutCount(settings.inputLanguages.size());
    for (const InputLanguage &language : settings.inputLanguages)
        PutLanguage(&writer, language);
    writer.Put(settings.languageSwitchHotkey);
    writer.Put(settings.keyboardLayoutSwitchHotkey);
    writer.Put(settings.capsLockTurnOffHotkey);
    return writer.Take();
}

} // namespace pba
