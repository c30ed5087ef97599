// The log with the line numbers of its error lines taken out, which change with every edit.
#pragma once

#include <QRegularExpression>

#include "fake_pbe.h"

inline QString LogWithoutLineNumbers()
{
    static const QRegularExpression number(QStringLiteral("\\([1-9]\\d*\\) returned"));
    return QString::fromUtf8(fake_pbe::LogText()).replace(number, QStringLiteral("(#) returned"));
}
