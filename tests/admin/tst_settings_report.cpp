// Settings shown, checked, and made of how a system is set up.
#include <QDir>
#include <QTemporaryDir>

#include "run_program.h"
#include "test_files.h"
#include "test_main.h"

// Three odd things and nothing wrong.
constexpr char kOdd[] = R"({
  "hostName": "pc",
  "inputLanguages": [
    {"languageId": 1034, "name": "Español", "layouts": [
      {"layoutId": "0001040a", "name": "Variación", "selectHotkey": "Ctrl+1"},
      {"layoutId": "0000040a", "name": "Español", "selectHotkey": "Ctrl+1"},
      {"layoutId": "00000409", "name": "US", "selectHotkey": "Shift+A"}]}],
  "languageSwitchHotkey": "Win+0x15", "keyboardLayoutSwitchHotkey": "none"
})";

class SettingsReportTest : public QObject
{
    Q_OBJECT

private slots:
    // Compiled settings as JSON compile to themselves.
    void showIsTheWayBack()
    {
        WriteFile(Path("in.json"), kOdd);
        QCOMPARE(Settings({"compile", Path("in.json"), Path("a.bin")}).errors, QByteArray());
        const Outcome json = Settings({"show", "--json", Path("a.bin")});
        WriteFile(Path("again.json"), json.output);
        QCOMPARE(Settings({"compile", Path("again.json"), Path("b.bin")}).errors, QByteArray());
        QVERIFY(!ReadFile(Path("a.bin")).isEmpty());
        QCOMPARE(ReadFile(Path("b.bin")), ReadFile(Path("a.bin")));
        const QByteArray text = Settings({"show", Path("a.bin")}).output;
        QVERIFY2(text.contains("0000040a  Español (Spanish), Ctrl+1"), text);
        QVERIFY2(text.contains("Next language:   Win+0x15"), text);
    }

    void warningsPass()
    {
        WriteFile(Path("in.json"), kOdd);
        const Outcome outcome = Settings({"check", Path("in.json")});
        QVERIFY2(outcome.exitCode == 0 && outcome.output.count("warning: ") == 3, outcome.output);
        for (const char *says :
             {"inputLanguages[0].layouts[0].layoutId: 0001040a is not known",
              "known for its language: 0000040a Spanish, 0000080a Latin American",
              "layouts[1].selectHotkey: Ctrl+1 is inputLanguages[0].layouts[0].selectHotkey",
              "layouts[2].selectHotkey: Shift+A cannot be typed"})
            QVERIFY2(outcome.output.contains(says), outcome.output);
        QCOMPARE(Settings({"check", "--json", Path("in.json")}).output.count("\"kind\": \"warning\""), 3);
    }

    void everyFaultIsFound()
    {
        // Without languages, and with a hot key of three modifiers.
        const QByteArray odd =
            QByteArray::fromHex("0100 01000000 7000 00000000 0300 1000 0200 1000 0700 a000");
        const std::tuple<QString, QByteArray, QList<QByteArray>> rows[] = {
            {"x.bin",
             odd,
             {": languageSwitchHotkey: ", ": capsLockTurnOffHotkey: ", ": inputLanguages: must be a list"}},
            {"x.bin", odd.chopped(3), {"the whole file: ends too early, at byte 20"}},
            {"x", QByteArray("\2\0\0\0", 4), {"the whole file: is not of version 1"}},
            {"x.json", R"({"hostName": "", "inputLanguages": []})", {": hostName: ", ": inputLanguages: "}},
        };
        for (const auto &[name, bytes, says] : rows) {
            WriteFile(Path(name), bytes);
            const Outcome outcome = Settings({"check", Path(name)});
            QVERIFY2(outcome.exitCode == 1 && outcome.errors.count('\n') == says.size(), outcome.errors);
            for (const QByteArray &one : says)
                QVERIFY2(outcome.errors.contains(one), outcome.errors);
        }
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
            {"XKBLAYOUT=us,us\n", "", "C.UTF-8", "English 00000409"},
            {"XKBLAYOUT='hr'\n", "", "hr_HR", "Hrvatski 0000041a"},
            {"XKBLAYOUT=ch\nXKBVARIANT=fr\n", "", "fr_CH.UTF-8", "Français 0000100c"},
            {"XKBLAYOUT=de\nXKBVARIANT=neo\n", "", "de_DE", "Deutsch 00000407", true},
            {"", "KEYMAP=de-latin1-nodeadkeys", "de_DE", "Deutsch 00010407"},
            {"", "KEYMAP=ru\nXKBLAYOUT=ru,us\n", "ru_RU", "Русский 00000419 English 00000409"},
            {"", "", "", "English 00000409", true},
        };
        QDir(m_directory.path()).mkpath("etc/default");
        WriteFile(Path("etc/hostname"), "lab-7\n");
        const QStringList arguments{"init", "--detect", "--root", m_directory.path(), Path("out.json")};
        for (const Row &row : rows) {
            WriteFile(Path("etc/default/keyboard"), row.keyboard);
            WriteFile(Path("etc/vconsole.conf"), row.console);
            WriteFile(Path("etc/default/locale"), "LANG=" + row.locale + "\n");
            QFile::remove(Path("out.json"));
            const Outcome outcome = Settings(arguments);
            QVERIFY(outcome.exitCode == 0 && outcome.errors.contains("note: ") == row.noted);
            CompareFailure(Settings(arguments), 1, "out.json: ");
            QCOMPARE(Settings({"check", Path("out.json")}).output,
                     Path("out.json").toUtf8() + ": in order\n");
            const QByteArrayList lines = Settings({"show", Path("out.json")}).output.split('\n');
            QCOMPARE(lines[0], "Host name:       lab-7");
            QByteArray languages;
            for (const QByteArray &line : lines.mid(4))
                languages += line.trimmed().split(' ')[0] + " ";
            QCOMPARE(languages.trimmed(), row.found);
        }
    }

private:
    QString Path(const QString &name) const { return m_directory.filePath(name); }
    Outcome Settings(const QStringList &arguments) const
    {
        return Run(PBA_ADMIN, QStringList{"settings"} + arguments);
    }

    QTemporaryDir m_directory;
};

PBA_REGISTER_TEST(SettingsReportTest);

#include "tst_settings_report.moc"
