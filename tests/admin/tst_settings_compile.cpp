// Settings from JSON to the bytes that the view reads.
#include <QDir>
#include <QTemporaryDir>

#include "run_program.h"
#include "test_files.h"
#include "test_main.h"

// Each row of the faults spoils one thing in it.
constexpr char kGood[] = R"({
  "hostName": "pc",
  "inputLanguages": [
    {"languageId": 1033, "name": "En", "layouts": [{"layoutId": "00000409", "name": "US", "selectHotkey": "Ctrl+1"}]}
  ]
})";

class SettingsCompileTest : public QObject
{
    Q_OBJECT

private slots:
    void theBytesOfARecord()
    {
        const QByteArray json = R"({"hostName": "P€", "inputLanguages": [
            {"languageId": "0x0407", "name": "De", "layouts": [
                {"layoutId": "0001a407", "name": "N", "selectHotkey": "Ctrl+Alt+F2"},
                {"layoutId": "00000407", "name": "😀"}]}],
            "languageSwitchHotkey": "Win+Space", "keyboardLayoutSwitchHotkey": "none"})";
        const QByteArray expected =
            QByteArray::fromHex("0100 02000000 5000 ac20 01000000 0704 02000000 4400 6500 02000000"
                                "07a40100 01000000 4e00 0300 7100 07040000 02000000 3dd8 00de 0000 0000"
                                "0800 2000 0000 0000 0000 1400");
        QCOMPARE(Compile(json).errors, QByteArray());
        QCOMPARE(ReadFile(m_output).toHex(' '), expected.toHex(' '));
    }

    void hotkeys()
    {
        const std::pair<const char *, const char *> accepted[] = {
            {"Win+Alt+Ctrl+Shift+Z", "0f005a00"}, {"Ctrl+Shift", "02001000"}, {"Alt+0xA0", "0100a000"}};
        for (const auto &[text, bytes] : accepted) {
            QCOMPARE(Compile(QByteArray(kGood).replace("Ctrl+1", text)).exitCode, 0);
            // Behind it stand those of language, layout and Caps Lock, here with their defaults.
            QCOMPARE(ReadFile(m_output).last(16).toHex(), QByteArray(bytes) + "010010000200100000001400");
        }
        for (const char *text :
             {"", "+1", "ctrl+1", "Ctrl+Ctrl+1", "F0", "F25", "0x0", "0x10000", "Ctrl+Alt+Shift", "12"})
            CompareFailure(Compile(QByteArray(kGood).replace("Ctrl+1", text)), 1,
                           ": inputLanguages[0].layouts[0].selectHotkey: ");
    }

    void faults()
    {
        // What is replaced, with what, and what is said of it.
        const std::tuple<const char *, const char *, const char *> rows[] = {
            {"\"pc\"", "\"\"", "hostName: must be text"},
            {"\"hostName\":", "\"hostName\": \"pd\", \"hostName\":", "hostName: stands twice"},
            {"1033", "65536", "inputLanguages[0].languageId: must be"},
            {"1033", "\"1033\"", "inputLanguages[0].languageId: must be a number"},
            {"00000409", "409", "inputLanguages[0].layouts[0].layoutId: must be text"},
            {"\"Ctrl+1\"", "1", "inputLanguages[0].layouts[0].selectHotkey: must"},
            {"\"layouts\": [", "\"layouts\": [], \"other\": [", "inputLanguages[0].layouts: must be a list"},
            {"[{\"layoutId", "[7, {\"layoutId", "inputLanguages[0].layouts[0]: must be an object"},
        };
        QCOMPARE(Compile(kGood).exitCode, 0);
        const QByteArray before = ReadFile(m_output);
        for (const auto &[replaced, with, says] : rows) {
            const Outcome outcome = Compile(QByteArray(kGood).replace(replaced, with));
            QVERIFY2(outcome.exitCode == 1 && outcome.errors.contains(says), outcome.errors);
            QCOMPARE(ReadFile(m_output), before);
        }
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), (QStringList{"in.json", "out.bin"}));
    }

    void filesThatCannotBeUsed()
    {
        QCOMPARE(Compile(kGood).exitCode, 0);
        const QStringList rows[] = {{"/no/such.json", m_output, "/no/such.json: cannot be read"},
                                    {"/", m_output, "/: cannot be read"},
                                    {m_input, "/no/such/out.bin", "/no/such/out.bin: cannot be created"},
                                    {m_input, "/dev/null", "/dev/null: exists and is no file"}};
        for (const QStringList &row : rows)
            CompareFailure(Run(PBA_ADMIN, {"settings", "compile", row[0], row[1]}), 1, row[2].toUtf8());
        CompareFailure(Run(PBA_ADMIN, {"settings", "compile", m_input, m_input}), 2, "is the input");
    }

private:
    Outcome Compile(const QByteArray &json)
    {
        WriteFile(m_input, json);
        return Run(PBA_ADMIN, {"settings", "compile", m_input, m_output});
    }

    QTemporaryDir m_directory;
    QString m_input = m_directory.filePath("in.json");
    QString m_output = m_directory.filePath("out.bin");
};

PBA_REGISTER_TEST(SettingsCompileTest);

#include "tst_settings_compile.moc"
