// SPDX-License-Identifier: Apache-2.0
#include "settings_format/settings_decoder.h"

#include <concepts>
#include <new>

namespace pba {

namespace {

// The bytes that an element of a list takes at least: the bound of what a count can promise.
template <typename T>
constexpr std::size_t kMinimalSize = 0;
template <>
constexpr std::size_t kMinimalSize<char16_t> = 2;
template <>
constexpr std::size_t kMinimalSize<KeyboardLayout> = 4 + 4 + 2 + 2;
template <>
constexpr std::size_t kMinimalSize<InputLanguage> = 2 + 4 + 4;

// Reads one field after the other; each answers whether the bytes were enough for it.
class Decoder
{
public:
    explicit Decoder(SettingsStream *stream)
        : m_stream(*stream)
    {
        m_stream.cursor = 0;
    }

    // Little-endian.
    template <std::unsigned_integral T>
    bool Read(T &value)
    {
        if (BytesLeft() < sizeof(T))
            return false;
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < sizeof(T); ++i)
            bits |= std::uint32_t{m_stream.bytes[m_stream.cursor++]} << 8 * i;
        value = static_cast<T>(bits);
        return true;
    }

    bool Read(Hotkey &hotkey) { return Read(hotkey.modifiers) && Read(hotkey.key); }

    bool Read(KeyboardLayout &layout)
    {
        return Read(layout.layoutId) && ReadList(layout.name) && Read(layout.selectHotkey);
    }

    bool Read(InputLanguage &language)
    {
        return Read(language.languageId) && ReadList(language.name) && ReadList(language.layouts);
    }

    bool Read(ConstantSettingsRecord &record)
    {
        PrebootSettings &settings = record.prebootSettings;
        return ReadList(record.hostName) && ReadList(settings.inputLanguages) &&
               Read(settings.languageSwitchHotkey) && Read(settings.keyboardLayoutSwitchHotkey) &&
               Read(settings.capsLockTurnOffHotkey);
    }

private:
    std::size_t BytesLeft() const { return m_stream.bytes.size() - m_stream.cursor; }

    bool Read(char16_t &unit)
    {
        std::uint16_t value = 0;
        const bool enough = Read(value);
        unit = value;
        return enough;
    }

    // A string or a list. A count that the bytes left cannot hold is refused before it costs memory.
    template <typename List>
    bool ReadList(List &list)
    {
        using Element = typename List::value_type;
        static_assert(kMinimalSize<Element> > 0);
        std::uint32_t count = 0;
        if (!Read(count) || count > BytesLeft() / kMinimalSize<Element>)
            return false;
        list.resize(count);
        for (Element &element : list) {
            if (!Read(element))
                return false;
        }
        return true;
    }

    SettingsStream &m_stream;
};

kro::result_t Decode(SettingsStream *stream, ConstantSettingsRecord *record)
{
    Decoder decoder(stream);
    std::uint16_t version = 0;
    if (!decoder.Read(version))
        return kro::kBufferTooSmall;
    if (version != kSettingsVersion)
        return kro::kInvalidVersion;
    return decoder.Read(*record) ? kro::kOk : kro::kBufferTooSmall;
}

} // namespace

kro::result_t DecodeSettings(SettingsStream *stream, ConstantSettingsRecord *record)
{
    try {
        return Decode(stream, record);
    } catch (const std::bad_alloc &) {
        return kro::kOutOfMemory;
    }
}

} // namespace pba
