// Runs a program of ours or the standard tool to its end; secrets go through standard input only.
#pragma once

#include <QProcess>
#include <QTest>

struct Outcome
{
    int exitCode; // -1 when a signal ended it
    QByteArray output;
    QByteArray errors;
};

inline Outcome Run(const QString &program, const QStringList &arguments, const QByteArray &input = {},
                   const QString &directory = {})
{
    QProcess process;
    process.setWorkingDirectory(directory);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000))
        qFatal("%s does not end", qPrintable(program));
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

inline Outcome RunStandardTool(const QStringList &arguments, const QByteArray &input = {})
{
    return Run("/usr/sbin/cryptsetup", arguments, input);
}

// One line that says what is wrong, and nothing on standard output.
inline void CompareFailure(const Outcome &outcome, int exitCode, const QByteArray &says)
{
    QVERIFY2(outcome.errors.startsWith("pba_") && outcome.errors.contains(says), outcome.errors);
    QVERIFY2(outcome.errors.count('\n') == 1 && outcome.errors.endsWith('\n'), outcome.errors);
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, QByteArray());
}
