// Settings shown, checked, and made of how a system is set up.
#include <QDir>
#include <QTemporaryDir>

#include "run_program.h"
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
        Write("in.json", kOdd);
        QCOMPARE(Settings({"compile", Path("in.json"), Path("a.bin")}).errors, QByteArray());
        const Outcome json = Settings({"show", "--json", Path("a.bin")});
        Write("again.json", json.output);
        QCOMPARE(Settings({"compile", Path("again.json"), Path("b.bin")}).errors, QByteArray());
        QVERIFY(!Read("a.bin").isEmpty());
        QCOMPARE(Read("b.bin"), Read("a.bin"));
        const QByteArray text = Settings({"show", Path("a.bin")}).output;
        QVERIFY2(text.contains("0000040a  Español (Spanish), Ctrl+1"), text);
        QVERIFY2(text.contains("Next language:   Win+0x15"), text);
    }

    void warningsPass()
    {
        Write("in.json", kOdd);
        const Outcome outcome = Settings({"check", Path("in.json")});
        QVERIFY2(outcome.exitCode == 0 && outcome.output.count("warning: ") == 3, outcome.output);
        for (const char *says : {"inputLanguages[0].layouts[0].layoutId: 0001040a is not known",
                                 "known for its language: 0000040a Spanish, 0000080a Latin American",
                                 "layouts[1].selectHotkey: Ctrl+1 is inputLanguages[0].layouts[0].selectHotkey",
                                 "layouts[2].selectHotkey: Shift+A cannot be typed"})
            QVERIFY2(outcome.output.contains(says), outcome.output);
        QCOMPARE(Settings({"check", "--json", Path("in.json")}).output.count("\"kind\": \"warning\""), 3);
    }

    // No languages; a hot key of three modifiers; cut off; another version; both forms.
    void everyFaultIsFound_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QList<QByteArray>>("says");
        const QByteArray noLanguages = QByteArray::fromHex("0100 01000000 7000 00000000 0300 1000 0200 1000 0700 a000");
        const QList<QByteArray> three{": languageSwitchHotkey: ", ": capsLockTurnOffHotkey: ",
                                      ": inputLanguages: must be a list"};
        QTest::newRow("compiled") << "x.bin" << noLanguages << three;
        QTest::newRow("cut") << "x.bin" << noLanguages.chopped(3)
                             << QList<QByteArray>{"the whole file: ends too early, at byte 20"};
        QTest::newRow("version") << "x" << QByteArray("\2\0\0\0", 4)
                                 << QList<QByteArray>{"the whole file: is not of version 1"};
        QTest::newRow("json") << "x.json" << QByteArray(R"({"hostName": "", "inputLanguages": []})")
                              << QList<QByteArray>{": hostName: ", ": inputLanguages: "};
    }
    void everyFaultIsFound()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QList<QByteArray>, says);
        Write(name, bytes);
        const Outcome outcome = Settings({"check", Path(name)});
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.errors.count('\n'), says.size());
        for (const QByteArray &one : says)
            QVERIFY2(outcome.errors.contains(one), outcome.errors);
    }

    // What the files below etc say, and the languages and layouts that come of it.
    void systemsAreDetected_data()
    {
        QTest::addColumn<QByteArray>("keyboard");
        QTest::addColumn<QByteArray>("console");
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QByteArray>("found");
        QTest::addColumn<bool>("noted");
        const auto row = [](const char *keyboard, const char *console, const char *locale, const char *found,
                            bool noted = false) {
            QTest::addRow("%s%s in %s", keyboard, console, locale)
                << QByteArray(keyboard) << QByteArray(console) << QByteArray(locale) << QByteArray(found) << noted;
        };
        row("# XKBLAYOUT=fr\nXKBLAYOUT=\"us,de\"\nXKBVARIANT=\",nodeadkeys\"\n", "KEYMAP=fr", "de_AT.UTF-8",
            "Deutsch 00010407 English 00000409");
        row("XKBLAYOUT=us,us\n", "", "C.UTF-8", "English 00000409");
        row("XKBLAYOUT='hr'\n", "", "hr_HR", "Hrvatski 0000041a");
        row("XKBLAYOUT=ch\nXKBVARIANT=fr\n", "", "fr_CH.UTF-8", "Français 0000100c");
        row("XKBLAYOUT=de\nXKBVARIANT=neo\n", "", "de_DE", "Deutsch 00000407", true);
        row("", "KEYMAP=de-latin1-nodeadkeys", "de_DE", "Deutsch 00010407");
        row("", "KEYMAP=ru\nXKBLAYOUT=ru,us\n", "ru_RU", "Русский 00000419 English 00000409");
        row("", "", "", "English 00000409", true);
    }
    void systemsAreDetected()
    {
        QFETCH(QByteArray, keyboard);
        QFETCH(QByteArray, console);
        QFETCH(QByteArray, locale);
        QFETCH(QByteArray, found);
        QDir(m_directory.path()).mkpath("etc/default");
        Write("etc/hostname", "lab-7\n");
        Write("etc/default/keyboard", keyboard);
        Write("etc/vconsole.conf", console);
        Write("etc/default/locale", "LANG=" + locale + "\n");
        QFile::remove(Path("out.json"));
        const QStringList arguments{"init", "--detect", "--root", m_directory.path(), Path("out.json")};
        const Outcome outcome = Settings(arguments);
        QCOMPARE(outcome.exitCode, 0);
        QTEST(outcome.errors.contains("note: "), "noted");
        CompareFailure(Settings(arguments), 1, "out.json: ");
        QCOMPARE(Settings({"check", Path("out.json")}).output, Path("out.json").toUtf8() + ": in order\n");
        QByteArray languages;
        QCOMPARE(Settings({"show", Path("out.json")}).output.split('\n').value(0), "Host name:       lab-7");
        for (const QByteArray &line : Settings({"show", Path("out.json")}).output.split('\n').mid(4))
            languages += line.trimmed().split(' ').value(0) + " ";
        QCOMPARE(languages.trimmed(), found);
    }

private:
    QString Path(const QString &name) const { return m_directory.filePath(name); }
    Outcome Settings(const QStringList &arguments) const { return Run(PBA_ADMIN, QStringList{"settings"} + arguments); }
    void Write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(Path(name));
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no file");
    }
    QByteArray Read(const QString &name) const
    {
        QFile file(Path(name));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_directory;
};

PBA_REGISTER_TEST(SettingsReportTest);

#include "tst_settings_report.moc"
