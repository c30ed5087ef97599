// Which hot keys and input languages are accepted, and what the log says of the others.
#include <initializer_list>

#include "log_lines.h"
#include "settings/hotkey_predicates.h"
#include "settings/input_locale_checks.h"
#include "test_main.h"

using namespace pba;

Q_DECLARE_METATYPE(PrebootSettings)

class ChecksTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }
    void ModifierKeys();
    void Hotkeys_data();
    void Hotkeys();
    void InputLocales_data();
    void InputLocales();
};

void ChecksTest::ModifierKeys()
{
    const QList<int> expected{0x10, 0x11, 0x12, 0x5B, 0x5C, 0xA0, 0xA1, 0xA2, 0xA3, 0xA4, 0xA5};
    QList<int> found;
    for (int key = 0; key <= 0xFFFF; ++key) {
        if (fde::boot::IsModifierKey(static_cast<std::uint16_t>(key)))
            found.append(key);
    }
    QCOMPARE(found, expected);
}

void ChecksTest::Hotkeys_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("one modifier with a modifier key") << 0x0001 << 0x10 << true;
    QTest::newRow("two with a modifier key") << 0x0003 << 0x10 << false;
    QTest::newRow("two others with right Alt") << 0x000C << 0xA5 << false;
    QTest::newRow("all with an ordinary key") << 0x000F << 0x31 << true;
    QTest::newRow("unknown bits do not count") << 0x0011 << 0xA0 << true;
    QTest::newRow("no key") << 0x000F << 0 << true;
}

void ChecksTest::Hotkeys()
{
    QFETCH(int, modifiers);
    QFETCH(int, key);
    QTEST(fde::boot::IsHotkeyAccepted({std::uint16_t(modifiers), std::uint16_t(key)}), "accepted");
}

void ChecksTest::InputLocales_data()
{
    QTest::addColumn<PrebootSettings>("settings");
    QTest::addColumn<QStringList>("errors");
    const QString locales = u"orvane fde::boot::CheckInputLocales(#) returned 0x80000046 error, message: "_qs;
    const QString hotkey =
        u"orvane fde::boot::`anonymous-namespace'::CheckHotkey(#) returned 0x80000046 error, "
        u"message: Hotkey 0x0010 is modifier. PBA does not support modifiers hot keys with "
        u"more than one modifier. Modifiers: 0x0003"_qs;
    const Hotkey bad{0x0003, 0x0010};
    const KeyboardLayout us{0x00000409, u"US", {0x0006, 0x31}};
    const KeyboardLayout noHotkey{0x00010409, u"Dvorak", {0x000F, 0}};
    const PrebootSettings good{{{1033, u"English", {us, noHotkey}}}, {1, 0x10}, {2, 0x10}, {0, 0x14}};
    QTest::newRow("good") << good << QStringList();

    PrebootSettings settings = good;
    settings.languageSwitchHotkey = settings.capsLockTurnOffHotkey = bad;
    settings.inputLanguages.clear();
    QTest::newRow("hot keys come first")
        << settings << QStringList{hotkey, locales + u"languageSwitchHotkey is invalid"_qs};
    settings = good;
    settings.keyboardLayoutSwitchHotkey = bad;
    QTest::newRow("layout switch") << settings
                                   << QStringList{hotkey,
                                                  locales + u"keyboardLayoutSwitchHotkey is invalid"_qs};
    settings = good;
    settings.capsLockTurnOffHotkey = bad;
    QTest::newRow("caps lock") << settings
                               << QStringList{hotkey, locales + u"capsLockTurnOffHotkey is invalid"_qs};
    settings = good;
    settings.inputLanguages.clear();
    QTest::newRow("no languages")
        << settings
        << QStringList{locales +
                       u"PrebootSettings: no input languages. PBA expects at least one input language."_qs};
    settings = good;
    settings.inputLanguages = {{1049, u"Рус", {}}, {1033, u"English", {{1, u"bad", bad}}}};
    QTest::newRow("no layouts, later languages unseen")
        << settings
        << QStringList{locales +
                       u"PrebootSettings: no keyboard layouts for ***(1049). PBA expects at least one "
                       u"keyboard layout per language."_qs};
    settings = good;
    settings.inputLanguages[0].layouts.push_back({0x00000409, u"UŠ", bad});
    QTest::newRow("layout hot key")
        << settings
        << QStringList{hotkey, locales +
                                   u"Layout select hot key is invalid. Language: English(1033). Layout: "
                                   u"U*(1033)."_qs};
}

void ChecksTest::InputLocales()
{
    QFETCH(PrebootSettings, settings);
    QFETCH(QStringList, errors);
    QCOMPARE(fde::boot::CheckInputLocales(settings), errors.isEmpty() ? kro::kOk : kro::kInvalidArgument);
    QCOMPARE(LogWithoutLineNumbers().split(u"\r\n"_qs, Qt::SkipEmptyParts), errors);
    // A log that nobody wants changes no result.
    fake_pbe::SetSeverity(0);
    QCOMPARE(fde::boot::CheckInputLocales(settings), errors.isEmpty() ? kro::kOk : kro::kInvalidArgument);
}

PBA_REGISTER_TEST(ChecksTest);

#include "tst_checks.moc"
