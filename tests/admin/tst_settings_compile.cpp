// Settings from JSON to the bytes that the view reads.
#include <QDir>
#include <QTemporaryDir>

#include "admin_tool.h"
#include "test_main.h"

namespace {

// Of one language with one layout; each row of the faults spoils one thing in it.
constexpr char kGood[] = R"({
  "hostName": "pc",
  "inputLanguages": [
    {"languageId": 1033, "name": "En", "layouts": [{"layoutId": "00000409", "name": "US", "selectHotkey": "Ctrl+1"}]}
  ]
})";

} // namespace

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
        const QByteArray expected = QByteArray::fromHex("0100"
                                                        "02000000 5000 ac20"
                                                        "01000000"
                                                        "0704 02000000 4400 6500"
                                                        "02000000"
                                                        "07a40100 01000000 4e00 0300 7100"
                                                        "07040000 02000000 3dd8 00de 0000 0000"
                                                        "0800 2000"
                                                        "0000 0000"
                                                        "0000 1400");
        QCOMPARE(Compile(json).errors, QByteArray());
        QCOMPARE(ReadOutput().toHex(' '), expected.toHex(' '));
    }

    void missingHotkeysTakeTheDefaults()
    {
        QCOMPARE(Compile(kGood).exitCode, 0);
        QCOMPARE(ReadOutput().last(16).toHex(' '),
                 QByteArray::fromHex("02003100 01001000 02001000 00001400").toHex(' '));
    }

    void hotkeys_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("bytes"); // empty: refused
        QTest::newRow("a digit") << QByteArray("Ctrl+1") << QByteArray("02003100");
        QTest::newRow("a letter, all modifiers")
            << QByteArray("Win+Alt+Ctrl+Shift+Z") << QByteArray("0f005a00");
        QTest::newRow("two modifiers") << QByteArray("Ctrl+Shift") << QByteArray("02001000");
        QTest::newRow("a key code") << QByteArray("Alt+0xA0") << QByteArray("0100a000");
        QTest::newRow("the last function key") << QByteArray("F24") << QByteArray("00008700");
        for (const char *text : {"", "+", "Ctrl+", "+1", "ctrl+1", "A+1", "Ctrl+Ctrl+1", "F0", "F25", "0x",
                                 "0x0", "0x10000", "Ctrl + 1", "Ctrl+Alt+Shift", "Ctrl+Shift+0x5B", "12"})
            QTest::addRow("refused: %s", text) << QByteArray(text) << QByteArray();
    }
    void hotkeys()
    {
        QFETCH(QByteArray, text);
        QFETCH(QByteArray, bytes);
        const Outcome outcome = Compile(QByteArray(kGood).replace("Ctrl+1", text));
        if (bytes.isEmpty())
            CompareFailure(outcome, 1, ": inputLanguages[0].layouts[0].selectHotkey: ");
        else
            QCOMPARE(ReadOutput().last(16).first(4).toHex(), bytes);
    }

    void faults_data()
    {
        QTest::addColumn<QByteArray>("replaced");
        QTest::addColumn<QByteArray>("with");
        QTest::addColumn<QByteArray>("says");
        const auto row = [](const char *replaced, const char *with, const char *says) {
            QTest::addRow("%s", says) << QByteArray(replaced) << QByteArray(with) << QByteArray(says);
        };
        row("\"pc\",", "\"pc\"", "line 3, column 18: not valid JSON");
        row(kGood, "", "line 1, column 1: not valid JSON");
        row(kGood, "[]", "the whole file: must be an object");
        row("hostName", "hostname", "hostname: unknown member");
        row("hostName", "hostname", "the whole file: lacks \"hostName\"");
        row("\"pc\"", "7", "hostName: must be text");
        row("\"pc\"", "\"\"", "hostName: must be text");
        row("\"hostName\": \"pc\",", "\"hostName\": \"pc\", \"hostName\": \"pd\",", "hostName: stands twice");
        row("1033", "0", "inputLanguages[0].languageId: ");
        row("1033", "65536", "inputLanguages[0].languageId: must be");
        row("1033", "\"1033\"", "inputLanguages[0].languageId: must be a number");
        row("1033", "-1", "inputLanguages[0].languageId: must be a number such");
        row("1033,", "1033, \"layout\": 1,", "inputLanguages[0].layout: unknown member");
        row("\"00000409\"", "409", "inputLanguages[0].layouts[0].layoutId: ");
        row("00000409", "0x000409", "inputLanguages[0].layouts[0].layoutId: must be");
        row("00000409", "409", "inputLanguages[0].layouts[0].layoutId: must be text");
        row("\"name\": \"US\",", "", "inputLanguages[0].layouts[0]: lacks \"name\"");
        row("\"Ctrl+1\"", "1", "inputLanguages[0].layouts[0].selectHotkey: must");
        row("[{\"layoutId\": \"00000409\", \"name\": \"US\", \"selectHotkey\": \"Ctrl+1\"}]", "[]",
            "inputLanguages[0].layouts: must be a list");
        row("{\"layoutId\": \"00000409\", \"name\": \"US\", \"selectHotkey\": \"Ctrl+1\"}", "7",
            "inputLanguages[0].layouts[0]: must be an object");
    }
    void faults()
    {
        QFETCH(QByteArray, replaced);
        QFETCH(QByteArray, with);
        QFETCH(QByteArray, says);
        QCOMPARE(Compile(kGood).exitCode, 0);
        const QByteArray before = ReadOutput();
        const QByteArray spoilt = QByteArray(kGood).replace(replaced, with);
        QVERIFY(spoilt != kGood);
        const Outcome outcome = Compile(spoilt);
        QVERIFY2(outcome.exitCode == 1 && outcome.errors.contains(says), outcome.errors);
        QCOMPARE(ReadOutput(), before);
        QCOMPARE(QDir(m_directory.path()).entryList(QDir::Files), (QStringList{"in.json", "out.bin"}));
    }

    void filesThatCannotBeUsed()
    {
        CompareFailure(RunAdmin({"settings", "compile", "/no/such.json", m_output}), 1, "/no/such.json");
        QVERIFY(Compile(kGood).exitCode == 0);
        CompareFailure(RunAdmin({"settings", "compile", m_input, "/no/such/out.bin"}), 1, "/no/such/out.bin");
        CompareFailure(RunAdmin({"settings", "compile", m_input}), 2, "OUT");
    }

private:
    Outcome Compile(const QByteArray &json)
    {
        QFile file(m_input);
        if (!file.open(QFile::WriteOnly) || file.write(json) != json.size())
            qFatal("no input");
        file.close();
        return RunAdmin({"settings", "compile", m_input, m_output});
    }
    QByteArray ReadOutput() const
    {
        QFile file(m_output);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_directory;
    QString m_input = m_directory.filePath("in.json");
    QString m_output = m_directory.filePath("out.bin");
};

PBA_REGISTER_TEST(SettingsCompileTest);

#include "tst_settings_compile.moc"
