// SPDX-License-Identifier: Apache-2.0
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

#ifdef POWER_LOSS
constexpr int kPowerLost = 86;

// The power goes at that write or sync of the file `path`, or of one in that directory.
inline Outcome RunUntil(int moment, const QString &path, const QStringList &command, const QByteArray &input)
{
    const QStringList environment{"LD_PRELOAD=" POWER_LOSS, "PBA_POWER_LOSS_FILE=" + path,
                                  "PBA_POWER_LOSS_AT=" + QString::number(moment)};
    return Run("/usr/bin/env", environment + command, input);
}
#endif

// One line that says what is wrong, and nothing on standard output.
inline void CompareFailure(const Outcome &outcome, int exitCode, const QByteArray &says)
{
    QVERIFY2(outcome.errors.startsWith("pba_") && outcome.errors.contains(says), outcome.errors);
    QVERIFY2(outcome.errors.count('\n') == 1 && outcome.errors.endsWith('\n'), outcome.errors);
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, QByteArray());
}
