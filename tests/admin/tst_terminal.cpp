// Passwords at a terminal: asked twice, never echoed, and the echo is back however the program ends.
#include <QFile>
#include <QTemporaryDir>

#include "run_program.h"
#include "test_main.h"

class TerminalTest : public QObject
{
    Q_OBJECT

private slots:
    void theNewPasswordIsAskedTwice_data()
    {
        QTest::addColumn<QByteArrayList>("typed");
        QTest::addColumn<QByteArray>("ends");
        QTest::newRow("another") << QByteArrayList{"Oops one\n", "Oops two\n"} << QByteArray("ends with 1");
        QTest::newRow("interrupted") << QByteArrayList{"Oops one\n", "Oops\x03"} << QByteArray("ends with 130");
        QTest::newRow("the same") << QByteArrayList{"Oops one\n", "Oops one\n"} << QByteArray("ends with 0");
    }
    void theNewPasswordIsAskedTwice()
    {
        QFETCH(QByteArrayList, typed);
        QFETCH(QByteArray, ends);
        const QString path = m_directory.filePath("volume.img");
        const QString command = "trap : INT; " PBA_ADMIN " volume create " + path +
                                " --size 20M --user anna --iter-time 1; echo ends with $?; stty -a";
        QProcess terminal;
        terminal.start("script", {"-qc", command, "/dev/null"});
        QVERIFY(AnswerPrompt(&terminal, "New password: ", typed[0]));
        QVERIFY(AnswerPrompt(&terminal, "New password again: ", typed[1]));
        QVERIFY(terminal.waitForFinished());
        const QByteArray shown = terminal.readAllStandardOutput();
        QVERIFY2(shown.contains(ends + "\r\n") && shown.contains(" echo "), shown);
        QVERIFY2(!shown.contains("Oops"), shown);
        QCOMPARE(QFile::exists(path), ends.endsWith("0") && !ends.endsWith("130"));
    }

private:
    // A prompt shows once the echo is off, and with it nothing else: not what was typed before.
    static bool AnswerPrompt(QProcess *terminal, const QByteArray &prompt, const QByteArray &answer)
    {
        QByteArray shown;
        while (!shown.endsWith(prompt) && terminal->waitForReadyRead())
            shown += terminal->readAllStandardOutput();
        terminal->write(answer);
        return shown.trimmed() == prompt.trimmed();
    }

    QTemporaryDir m_directory;
};

PBA_REGISTER_TEST(TerminalTest);

#include "tst_terminal.moc"
