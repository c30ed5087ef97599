// SPDX-License-Identifier: Apache-2.0
// What a command of pba_admin writes with --json: valid, whatever stands in a header, and of keys that the
// manual names.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "tests/support/run_program.h"
#include "tests/support/test_files.h"

inline void CheckKeys(const QJsonValue &value, const QByteArray &manual)
{
    const QJsonObject object = value.toObject();
    for (const QString &key : object.keys()) {
        if (!manual.contains("\\fB" + key.toUtf8().replace("-", "\\-") + "\\fR"))
            qFatal("the manual does not name %s", qPrintable(key));
        CheckKeys(object[key], manual);
    }
    for (const QJsonValue &element : value.toArray())
        CheckKeys(element, manual);
}

inline QJsonDocument ReadReport(const QByteArray &output)
{
    QJsonParseError fault;
    const QJsonDocument report = QJsonDocument::fromJson(output, &fault);
    const bool plain =
        std::all_of(output.begin(), output.end(), [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); });
    if (fault.error != QJsonParseError::NoError || !plain)
        qFatal("no report: %s", output.constData());
    CheckKeys(report.isArray() ? QJsonValue(report.array()) : QJsonValue(report.object()), ReadFile(MANUAL));
    return report;
}
