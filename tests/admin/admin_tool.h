// Runs pba_admin and the standard tool, secrets through standard input only.
#pragma once

#include <QProcess>
#include <QTest>

struct Outcome
{
    int exitCode;
    QByteArray output;
    QByteArray errors;
};

inline Outcome Run(const QString &program, const QStringList &arguments, const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
        qFatal("%s does not end well", qPrintable(program));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

inline Outcome RunAdmin(const QStringList &arguments, const QByteArray &input = {})
{
    return Run(QStringLiteral(PBA_ADMIN), arguments, input);
}

// One line that says what is wrong, and nothing on standard output.
inline void CompareFailure(const Outcome &outcome, int exitCode, const QByteArray &says)
{
    QVERIFY2(outcome.errors.startsWith("pba_admin: ") && outcome.errors.contains(says), outcome.errors);
    QVERIFY2(outcome.errors.count('\n') == 1 && outcome.errors.endsWith('\n'), outcome.errors);
    QCOMPARE(outcome.exitCode, exitCode);
    QCOMPARE(outcome.output, QByteArray());
}
