// Error lines in the log, without their line numbers, which change with every edit.
#pragma once

#include <QRegularExpression>

#include "fake_pbe.h"

inline QByteArray LogWithoutLineNumbers()
{
    static const QRegularExpression number(QStringLiteral("\\([1-9]\\d*\\) returned"));
    return QString::fromUtf8(fake_pbe::LogText()).replace(number, QStringLiteral("() returned")).toUtf8();
}

inline QByteArray ErrorLine(const QByteArray &function, const char *code, const QByteArray &message)
{
    return "orvane " + function + "() returned " + code + " error, message: " + message + "\r\n";
}
