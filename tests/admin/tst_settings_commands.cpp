// SPDX-License-Identifier: Apache-2.0
// Settings from JSON to the bytes that the view reads and back, checked, and made of how a system is set up.
#include <sys/stat.h>

#include <QDir>
#include <QTemporaryDir>

#include "tests/support/json_report.h"
#include "tests/support/test_main.h"

// Each row of the findings spoils one thing in it.
constexpr char kLayouts[] = R"([
    {"layoutId": "0000040a", "name": "Español", "selectHotkey": "Ctrl+1"}, {"layoutId": "00000409", "name": "US"}])";
const QByteArray kGood = QByteArray(R"({
  "hostName": "pc",
  "inputLanguages": [{"languageId": 1034, "name": "Español", "layouts": )") +
                         kLayouts + "}]}";

class SettingsCommandsTest : public QObject
{
    Q_OBJECT

private slots:
    // Shown as JSON they compile to themselves.
    void theBytesOfARecord()
    {
        QByteArray json = R"({"hostName": "P€", "inputLanguages": [
            {"languageId": "0x0407", "name": "De", "layouts": [
                {"layoutId": "0001a407", "name": "N", "selectHotkey": "Ctrl+Alt+F2"},
                {"layoutId": "00000407", "name": "😀"}]}],
            "languageSwitchHotkey": "Win+Space", "keyboardLayoutSwitchHotkey": "none"})";
        const QByteArray expected =
            QByteArray::fromHex("0100 02000000 5000 ac20 01000000 0704 02000000 4400 6500 02000000"
                                "07a40100 01000000 4e00 0300 7100 07040000 02000000 3dd8 00de 0000 0000"
                                "0800 2000 0000 0000 0000 1400");
        for (int times = 0; times < 2; ++times) {
            QCOMPARE(Compile(json).errors, QByteArray());
            QCOMPARE(ReadFile(m_output).toHex(' '), expected.toHex(' '));
            json = Settings({"show", "--json", m_output}).output;
            QVERIFY2(json.contains("P€"), json);
        }
    }

    void hotkeys()
    {
        const std::pair<const char *, const char *> accepted[] = {
            {"Win+Alt+Ctrl+Shift+Z", "0f005a00"}, {"Ctrl+Shift", "02001000"}, {"Alt+0xA0", "0100a000"}};
        for (const auto &[text, bytes] : accepted) {
            QCOMPARE(Compile(QByteArray(kGood).replace("Ctrl+1", text)).exitCode, 0);
            QVERIFY2(ReadFile(m_output).toHex().contains(bytes), text);
        }
        for (const char *text :
             {"", "+1", "ctrl+1", "Ctrl+Ctrl+1", "F0", "F25", "0x0", "0x10000", "Ctrl+Alt+Shift", "12"})
            CompareFailure(Compile(QByteArray(kGood).replace("Ctrl+1", text)), 1,
                           ": inputLanguages[0].layouts[0].selectHotkey: ");
    }

    // What is replaced, with what, and what is said of it. Faults spare the settings that are there.
    void findings()
    {
        const std::tuple<const char *, const char *, const char *> faults[] = {
            {"\"pc\"", "\"\"", ": hostName: must be text"},
            {"\"hostName\":", "\"hostName\": \"pd\", \"hostName\":", ": hostName: stands twice"},
            {"1034", "65536", ": inputLanguages[0].languageId: must be"},
            {kLayouts, "[]", ": inputLanguages[0].layouts: must be a list with at least one element"},
            {kLayouts, "{}", ": inputLanguages[0].layouts: must be a list with at least one element"},
            {"00000409", "409", ": inputLanguages[0].layouts[1].layoutId: must be text"},
            {"\"Ctrl+1\"", "1", ": inputLanguages[0].layouts[0].selectHotkey: must"},
            {"{\"layoutId\": \"00000409", "7, {\"layoutId\": \"00000409", "].layouts[1]: must be an object"}};
        QCOMPARE(Compile(kGood).exitCode, 0);
        const QByteArray before = ReadFile(m_output);
        for (const auto &[replaced, with, says] : faults) {
            CompareFailure(Compile(QByteArray(kGood).replace(replaced, with)), 1, says);
            QCOMPARE(ReadFile(m_output), before);
            CompareFailure(Settings({"check", m_input}), 1, says);
        }
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), (QStringList{"in.json", "out.bin"}));
        const std::tuple<const char *, const char *, const char *> warnings[] = {
            {"0000040a", "0001040a", "; known for its language: 0000040a Spanish, 0000080a"},
            {"\"US\"", "\"US\", \"selectHotkey\": \"Ctrl+1\"",
             "layouts[1].selectHotkey: Ctrl+1 is inputLanguages[0].layouts[0].selectHotkey"},
            {"\"pc\"", "\"p\u200bc\"", "hostName: has a character that does not show"},
            {"Ctrl+1", "Shift+A", "layouts[0].selectHotkey: Shift+A cannot be typed"}};
        for (const auto &[replaced, with, says] : warnings) {
            QCOMPARE(Compile(QByteArray(kGood).replace(replaced, with)).exitCode, 0);
            const Outcome outcome = Settings({"check", m_input});
            QVERIFY2(outcome.exitCode == 0 && outcome.output.contains(says), outcome.output);
            QVERIFY2(outcome.output.startsWith("warning: ") && outcome.output.count('\n') == 1, says);
            QVERIFY(!Settings({"show", "--json", m_output}).output.contains("\u200b"));
        }
    }

    void faultsInCompiledSettings()
    {
        // Without languages, and with a hot key of three modifiers.
        WriteFile(m_output, QByteArray::fromHex("0100 01000000 7000 00000000 0300 1000 0200 1000 0700 a000"));
        const QByteArray faults = Settings({"check", m_output}).errors;
        for (const char *says : {"languageSwitchHotkey: ", "capsLockTurnOffHotkey: ", "inputLanguages: "})
            QVERIFY2(faults.count(says) == 1 && faults.count('\n') == 3, faults);
    }

    // By its name, else by what is in it.
    void theKindOfAFile()
    {
        QCOMPARE(Compile(kGood).exitCode, 0);
        const QByteArray json = ReadFile(m_input);
        const QByteArray compiled = ReadFile(m_output);
        const std::tuple<const char *, QByteArray, const char *> rows[] = {
            {"a", compiled, "a: in order"},
            {"b", json, "b: in order"},
            {"a.bin", json, "are no compiled settings"},
            {"b.json", compiled, "line 1, column 1: not valid JSON"},
            {"c.bin", compiled + "x", "warning: "},
            {"d.bin", compiled.chopped(1), "ends too early, at byte"}};
        for (const auto &[name, content, says] : rows) {
            WriteFile(m_directory.filePath(name), content);
            const Outcome outcome = Settings({"check", m_directory.filePath(name)});
            QVERIFY2((outcome.output + outcome.errors).contains(says), name);
            const Outcome list = Settings({"check", "--json", m_directory.filePath(name)});
            QVERIFY(list.exitCode == outcome.exitCode && list.errors.isEmpty());
            QCOMPARE(ReadReport(list.output).array().isEmpty(), QByteArray(says).endsWith("in order"));
            QCOMPARE((outcome.output + outcome.errors).count('\n'), 1);
        }
    }

    void aFileOfTheFirstVersion()
    {
        const QByteArray frozen = ReadFile(FROZEN "settings.bin");
        QCOMPARE(Compile(Settings({"show", "--json", FROZEN "settings.bin"}).output).errors, QByteArray());
        QVERIFY(frozen.size() > 100 && ReadFile(m_output) == frozen);
    }

    void outputsThatCannotBeUsed()
    {
        WriteFile(m_input, kGood);
        const QString fifo = m_directory.filePath("fifo"); // in the place of a device
        QCOMPARE(mkfifo(qPrintable(fifo), 0600), 0);
        const std::tuple<QString, int, const char *> rows[] = {
            {"/no/such/out.bin", 1,
             "/no/such/out.bin: cannot be created: there is no directory /no/such; make it first"},
            {fifo, 1, "fifo: exists and is no file"},
            {m_input, 2, "is the input"}};
        for (const auto &[output, exitCode, says] : rows)
            CompareFailure(Settings({"compile", m_input, output}), exitCode, says);
        QCOMPARE(ReadFile(m_input), kGood);
    }

    // What the files below etc say: the keyboard's, the console's and the locale, the languages and layouts
    // that come of it, and whether there is something to note.
    void systemsAreDetected()
    {
        struct Row
        {
            QByteArray keyboard, console, locale, found;
            bool noted = false;
        };
        const Row rows[] = {
            {"# XKBLAYOUT=fr\nXKBLAYOUT=\"us,de\"\nXKBVARIANT=\",nodeadkeys\"\n", "KEYMAP=fr", "de_AT.UTF-8",
             "Deutsch 00010407 English 00000409"},
            {"XKBLAYOUT=ch\nXKBVARIANT=fr\n", "", "fr_CH.UTF-8", "Français 0000100c"},
            {"XKBLAYOUT=de\nXKBVARIANT=neo\n", "", "de_DE", "Deutsch 00000407", true},
            {"", "KEYMAP=de-latin1-nodeadkeys", "de_DE", "Deutsch 00010407"},
            {"", "KEYMAP=ru\nXKBLAYOUT=ru,us\n", "ru_RU", "Русский 00000419 English 00000409"},
            {"", "", "", "English 00000409", true},
        };
        const QString etc = m_directory.filePath("etc/");
        const QString output = m_directory.filePath("out.json");
        QDir().mkpath(etc + "default");
        WriteFile(etc + "hostname", "lab-7\n");
        const QStringList arguments{"init", "--detect", "--root", m_directory.path(), output};
        for (const Row &row : rows) {
            WriteFile(etc + "default/keyboard", row.keyboard);
            WriteFile(etc + "vconsole.conf", row.console);
            WriteFile(etc + "default/locale", "LANG=" + row.locale + "\n");
            QFile::remove(output);
            const Outcome outcome = Settings(arguments);
            QVERIFY(outcome.exitCode == 0 && outcome.errors.contains("note: ") == row.noted);
            CompareFailure(Settings(arguments), 1, "out.json: ");
            QVERIFY(Settings({"check", output}).output.endsWith(": in order\n"));
            const QByteArrayList lines = Settings({"show", output}).output.split('\n');
            QCOMPARE(lines[0], "Host name:       lab-7");
            QByteArray languages;
            for (const QByteArray &line : lines.mid(4))
                languages += line.trimmed().split(' ')[0] + " ";
            QCOMPARE(languages.trimmed(), row.found);
        }
    }

private:
    static Outcome Settings(const QStringList &arguments)
    {
        return Run(PBA_ADMIN, QStringList{"settings"} + arguments);
    }
    Outcome Compile(const QByteArray &json) const
    {
        WriteFile(m_input, json);
        return Settings({"compile", m_input, m_output});
    }

    QTemporaryDir m_directory;
    QString m_input = m_directory.filePath("in.json");
    QString m_output = m_directory.filePath("out.bin");
};

PBA_REGISTER_TEST(SettingsCommandsTest);

#include "tst_settings_commands.moc"
