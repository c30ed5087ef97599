// SPDX-License-Identifier: Apache-2.0
#include "admin/languages.h"

#include <algorithm>
#include <iterator>

namespace admin {
namespace {

// The low ten bits of an identifier are the language; where they stand for several, the whole tells.
constexpr std::uint16_t kLanguageBits = 0x3FF;

struct Language
{
    std::uint16_t id;
    std::string_view locale;
    const char *name;
};

// clang-format off
constexpr Language kLanguages[] = {
    {0x041a, "hr", "Hrvatski"},   {0x081a, "sr", "Srpski"},      {0x0c1a, "sr", "Српски"},
    {0x201a, "bs", "Босански"},   {0x0404, "zh", "繁體中文"},    {0x0804, "zh", "简体中文"},
    {0x0c04, "zh", "繁體中文"},   {0x1004, "zh", "简体中文"},    {0x1404, "zh", "繁體中文"},
    {0x0001, "ar", "العربية"},    {0x0002, "bg", "Български"},   {0x0005, "cs", "Čeština"},
    {0x0006, "da", "Dansk"},      {0x0007, "de", "Deutsch"},     {0x0008, "el", "Ελληνικά"},
    {0x0009, "en", "English"},    {0x000a, "es", "Español"},     {0x000b, "fi", "Suomi"},
    {0x000c, "fr", "Français"},   {0x000d, "he", "עברית"},       {0x000e, "hu", "Magyar"},
    {0x000f, "is", "Íslenska"},   {0x0010, "it", "Italiano"},    {0x0011, "ja", "日本語"},
    {0x0012, "ko", "한국어"},     {0x0013, "nl", "Nederlands"},  {0x0014, "nb", "Norsk"},
    {0x0015, "pl", "Polski"},     {0x0016, "pt", "Português"},   {0x0018, "ro", "Română"},
    {0x0019, "ru", "Русский"},    {0x001b, "sk", "Slovenčina"},  {0x001c, "sq", "Shqip"},
    {0x001d, "sv", "Svenska"},    {0x001e, "th", "ไทย"},         {0x001f, "tr", "Türkçe"},
    {0x0020, "ur", "اردو"},       {0x0022, "uk", "Українська"},  {0x0023, "be", "Беларуская"},
    {0x0024, "sl", "Slovenščina"}, {0x0025, "et", "Eesti"},      {0x0026, "lv", "Latviešu"},
    {0x0027, "lt", "Lietuvių"},   {0x0028, "tg", "Тоҷикӣ"},      {0x0029, "fa", "فارسی"},
    {0x002a, "vi", "Tiếng Việt"}, {0x002b, "hy", "Հայերեն"},     {0x002c, "az", "Azərbaycan"},
    {0x002e, "hsb", "Hornjoserbšćina"}, {0x002f, "mk", "Македонски"}, {0x0037, "ka", "ქართული"},
    {0x0038, "fo", "Føroyskt"},   {0x003a, "mt", "Malti"},       {0x003b, "se", "Davvisámegiella"},
    {0x003f, "kk", "Қазақша"},    {0x0042, "tk", "Türkmençe"},   {0x0043, "uz", "Ўзбек"},
    {0x0044, "tt", "Татар"},      {0x004e, "mr", "मराठी"},        {0x0051, "bo", "བོད་ཡིག"},
    {0x0052, "cy", "Cymraeg"},    {0x0054, "lo", "ລາວ"},         {0x005a, "syr", "ܣܘܪܝܝܐ"},
    {0x0065, "dv", "ދިވެހި"},       {0x006d, "ba", "Башҡорт"},     {0x006e, "lb", "Lëtzebuergesch"},
    {0x006f, "kl", "Kalaallisut"}, {0x0080, "ug", "ئۇيغۇرچە"},
};
// clang-format on

const Language *FindLanguage(std::uint16_t languageId)
{
    for (const std::uint16_t id : {languageId, static_cast<std::uint16_t>(languageId & kLanguageBits)}) {
        const auto *found = std::find_if(std::begin(kLanguages), std::end(kLanguages),
                                         [id](const Language &language) { return language.id == id; });
        if (found != std::end(kLanguages))
            return found;
    }
    return nullptr;
}

} // namespace

const char *LanguageName(std::uint16_t languageId)
{
    const Language *language = FindLanguage(languageId);
    return language ? language->name : "";
}

bool IsLocaleOf(std::string_view locale, std::uint16_t languageId)
{
    const Language *language = FindLanguage(languageId);
    return language && locale.substr(0, locale.find_first_of("_.@")) == language->locale;
}

} // namespace admin
