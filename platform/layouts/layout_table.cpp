// SPDX-License-Identifier: Apache-2.0
// An identifier is here only when letters and digits of the two layouts lie on the same keys (Lithuanian
// alone has its 9 and 0 behind AltGr): what types something else than the keys say locks people out.
// Therefore some are missing whose language the X keyboard extension has: the Indic ones with Latin digits,
// the older Persian one, the Greek ones of 220 and 319 keys.
#include "platform/layouts/layout_table.h"

#include <algorithm>

namespace layouts {

namespace {

constexpr Layout kLayouts[] = {
    {0x00000401, "Arabic (101)", "ara", ""},
    {0x00000402, "Bulgarian (Typewriter)", "bg", ""},
    {0x00000404, "Chinese (Traditional) - US", "us", ""},
    {0x00000405, "Czech", "cz", ""},
    {0x00000406, "Danish", "dk", "winkeys"},
    {0x00000407, "German", "de", ""},
    {0x00000408, "Greek", "gr", ""},
    {0x00000409, "US", "us", ""},
    {0x0000040a, "Spanish", "es", "winkeys"},
    {0x0000040b, "Finnish", "fi", "winkeys"},
    {0x0000040c, "French", "fr", ""},
    {0x0000040d, "Hebrew", "il", ""},
    {0x0000040e, "Hungarian", "hu", ""},
    {0x0000040f, "Icelandic", "is", ""},
    {0x00000410, "Italian", "it", "winkeys"},
    {0x00000411, "Japanese", "jp", ""},
    {0x00000412, "Korean", "kr", ""},
    {0x00000413, "Dutch", "nl", "std"},
    {0x00000414, "Norwegian", "no", "winkeys"},
    {0x00000415, "Polish (Programmers)", "pl", ""},
    {0x00000416, "Portuguese (Brazil ABNT)", "br", ""},
    {0x00000418, "Romanian (Legacy)", "ro", "winkeys"},
    {0x00000419, "Russian", "ru", ""},
    {0x0000041a, "Croatian", "si", ""},
    {0x0000041b, "Slovak", "sk", ""},
    {0x0000041c, "Albanian", "al", ""},
    {0x0000041d, "Swedish", "se", ""},
    {0x0000041e, "Thai Kedmanee", "th", ""},
    {0x0000041f, "Turkish Q", "tr", ""},
    {0x00000420, "Urdu", "in", "urd-winkeys"},
    {0x00000422, "Ukrainian", "ua", "winkeys"},
    {0x00000423, "Belarusian", "by", ""},
    {0x00000424, "Slovenian", "si", ""},
    {0x00000425, "Estonian", "ee", ""},
    {0x00000426, "Latvian", "lv", "ergonomic"},
    {0x00000427, "Lithuanian IBM", "lt", "ibm"},
    {0x00000428, "Tajik", "tj", ""},
    {0x0000042a, "Vietnamese", "vn", ""},
    {0x0000042b, "Armenian Eastern (Legacy)", "am", "eastern-alt"},
    {0x0000042c, "Azerbaijani Latin", "az", ""},
    {0x0000042f, "Macedonian", "mk", ""},
    {0x00000438, "Faeroese", "fo", ""},
    {0x0000043a, "Maltese 47-Key", "mt", "us"},
    {0x0000043b, "Norwegian with Sami", "no", "winkeys"},
    {0x0000043f, "Kazakh", "kz", ""},
    {0x00000442, "Turkmen", "tm", ""},
    {0x0000044e, "Marathi", "in", ""},
    {0x00000451, "Tibetan (PRC)", "cn", "tib"},
    {0x00000452, "United Kingdom Extended", "gb", "extd"},
    {0x00000454, "Lao", "la", "stea"},
    {0x0000045a, "Syriac", "sy", "syc"},
    {0x00000465, "Divehi Phonetic", "mv", ""},
    {0x0000046d, "Bashkir", "ru", "bak"},
    {0x0000046e, "Luxembourgish", "ch", "fr"},
    {0x0000046f, "Greenlandic", "dk", ""},
    {0x00000480, "Uyghur (Legacy)", "cn", "ug"},
    {0x00000804, "Chinese (Simplified) - US", "us", ""},
    {0x00000807, "Swiss German", "ch", ""},
    {0x00000809, "United Kingdom", "gb", ""},
    {0x0000080a, "Latin American", "latam", ""},
    {0x0000080c, "Belgian French", "be", ""},
    {0x00000813, "Belgian (Period)", "be", ""},
    {0x00000816, "Portuguese", "pt", ""},
    {0x0000081a, "Serbian (Latin)", "rs", "latin"},
    {0x0000083b, "Swedish with Sami", "se", ""},
    {0x00000843, "Uzbek Cyrillic", "uz", ""},
    {0x00000c04, "Chinese (Traditional, Hong Kong) - US", "us", ""},
    {0x00000c0c, "Canadian French (Legacy)", "ca", "fr-legacy"},
    {0x00000c1a, "Serbian (Cyrillic)", "rs", ""},
    {0x00001004, "Chinese (Simplified, Singapore) - US", "us", ""},
    {0x00001009, "Canadian French", "ca", ""},
    {0x0000100c, "Swiss French", "ch", "fr"},
    {0x00001404, "Chinese (Traditional, Macao) - US", "us", ""},
    {0x00001809, "Irish", "ie", ""},
    {0x0000201a, "Bosnian (Cyrillic)", "rs", ""},
    {0x00004009, "English (India)", "in", "eng"},
    {0x00010401, "Arabic (102)", "ara", ""},
    {0x00010405, "Czech (QWERTY)", "cz", "qwerty"},
    {0x00010407, "German (IBM)", "de", "nodeadkeys"},
    {0x00010409, "United States-Dvorak", "us", "dvorak"},
    {0x0001040c, "French (Standard, AZERTY)", "fr", "afnor"},
    {0x0001040e, "Hungarian 101-key", "hu", "101_qwerty_comma_dead"},
    {0x00010410, "Italian (142)", "it", "ibm"},
    {0x00010415, "Polish (214)", "pl", "qwertz"},
    {0x00010416, "Portuguese (Brazil ABNT2)", "br", ""},
    {0x00010418, "Romanian (Standard)", "ro", "std"},
    {0x00010419, "Russian (Typewriter)", "ru", "typewriter"},
    {0x0001041b, "Slovak (QWERTY)", "sk", "qwerty"},
    {0x0001041e, "Thai Pattachote", "th", "pat"},
    {0x0001041f, "Turkish F", "tr", "f"},
    {0x00010426, "Latvian (QWERTY)", "lv", ""},
    {0x00010427, "Lithuanian", "lt", ""},
    {0x0001042b, "Armenian Western (Legacy)", "am", "western"},
    {0x00010437, "Georgian (QWERTY)", "ge", ""},
    {0x0001043a, "Maltese 48-Key", "mt", ""},
    {0x00010444, "Tatar", "ru", "tt"},
    {0x0001045a, "Syriac Phonetic", "sy", "syc_phonetic"},
    {0x00010480, "Uyghur", "cn", "ug"},
    {0x0001080c, "Belgian (Comma)", "be", ""},
    {0x0001083b, "Finnish with Sami", "fi", "winkeys"},
    {0x00011009, "Canadian Multilingual Standard", "ca", "multix"},
    {0x00011809, "Scottish Gaelic", "gb", "extd"},
    {0x00020401, "Arabic (102) AZERTY", "ara", "azerty"},
    {0x00020402, "Bulgarian (Phonetic)", "bg", "bas_phonetic"},
    {0x00020405, "Czech Programmers", "us", ""},
    {0x00020409, "United States-International", "us", "intl"},
    {0x0002040c, "French (Standard, BÉPO)", "fr", "bepo_afnor"},
    {0x0002040d, "Hebrew (Standard)", "il", ""},
    {0x00020418, "Romanian (Programmers)", "ro", ""},
    {0x0002041e, "Thai Kedmanee (non-ShiftLock)", "th", ""},
    {0x00020422, "Ukrainian (Enhanced)", "ua", "winkeys"},
    {0x00020427, "Lithuanian Standard", "lt", "std"},
    {0x0002042e, "Sorbian Standard", "de", ""},
    {0x00020437, "Georgian (Ergonomic)", "ge", "ergonomic"},
    {0x00030402, "Bulgarian", "bg", ""},
    {0x00030409, "United States-Dvorak for left hand", "us", "dvorak-l"},
    {0x0003041e, "Thai Pattachote (non-ShiftLock)", "th", "pat"},
    {0x00040402, "Bulgarian (Phonetic Traditional)", "bg", "phonetic"},
    {0x00040409, "United States-Dvorak for right hand", "us", "dvorak-r"},
    {0x00050429, "Persian (Standard)", "ir", ""},
    {0x00060408, "Greek Polytonic", "gr", "polytonic"},
};

constexpr bool ById(const Layout &left, const Layout &right)
{
    return left.id < right.id;
}

static_assert(std::is_sorted(std::begin(kLayouts), std::end(kLayouts), ById));

// An identifier's low half is the language that the layout was made for, and the low ten bits of that leave
// the country out.
constexpr std::uint32_t kLocale = 0xFFFF;
constexpr std::uint32_t kLanguage = 0x3FF;

} // namespace

std::span<const Layout> All()
{
    return kLayouts;
}

const Layout *Find(std::uint32_t id)
{
    const auto *found =
        std::lower_bound(std::begin(kLayouts), std::end(kLayouts), Layout{id, "", "", ""}, ById);
    return found != std::end(kLayouts) && found->id == id ? found : nullptr;
}

std::vector<const Layout *> FindByXkb(std::string_view xkbLayout, std::string_view xkbVariant)
{
    std::vector<const Layout *> found;
    for (const Layout &layout : kLayouts) {
        if (layout.xkbLayout == xkbLayout && layout.xkbVariant == xkbVariant)
            found.push_back(&layout);
    }
    return found;
}

std::vector<const Layout *> OfSameLanguage(std::uint32_t id)
{
    std::vector<const Layout *> same;
    for (const Layout &layout : kLayouts) {
        if (((layout.id ^ id) & kLanguage) == 0)
            same.push_back(&layout);
    }
    std::stable_partition(same.begin(), same.end(),
                          [id](const Layout *layout) { return ((layout->id ^ id) & kLocale) == 0; });
    return same;
}

} // namespace layouts
