// Passwords at a terminal: asked twice, never echoed, and the echo is back however the program ends.
#include <QFile>
#include <QTemporaryDir>

#include "run_program.h"
#include "test_main.h"

class TerminalTest : public QObject
{
    Q_OBJECT

private slots:
    void theNewPasswordIsAskedTwice()
    {
        const QString path = m_directory.filePath("volume.img");
        const QString command = "trap : INT; " PBA_ADMIN " volume create " + path +
                                " --size 20M --user anna --iter-time 1; echo ends with $?; stty -a";
        for (const auto &[again, exitCode] :
             {std::pair("Oops two\n", 1), {"Oops\x03", 130}, {"Oops one\n", 0}}) {
            QProcess terminal;
            terminal.start("script", {"-qc", command, "/dev/null"});
            QVERIFY(AnswerPrompt(&terminal, "New password: ", "Oops one\n"));
            QVERIFY(AnswerPrompt(&terminal, "New password again: ", again));
            QVERIFY(terminal.waitForFinished());
            const QByteArray shown = terminal.readAllStandardOutput();
            QVERIFY2(shown.contains("ends with " + QByteArray::number(exitCode) + "\r\n"), shown);
            QVERIFY2(shown.contains(" echo ") && !shown.contains("Oops"), shown);
            QCOMPARE(QFile::exists(path), exitCode == 0);
        }
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
