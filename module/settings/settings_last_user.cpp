// SPDX-License-Identifier: Apache-2.0
// The memory of the last user and domain.
#include "module/settings/settings.h"

#include "module/settings/paths.h"
#include "module/settings/pba_file.h"
#include "module/settings/text_file.h"
#include "module/trace/trace_message.h"

namespace pba {

bool Settings::IsLastDomainSaved() const
{
    return PbaFileExists(QString::fromUtf16(kLastDomainPath));
}

QString Settings::ReadLastDomain() const
{
    QString domain;
    if (!ReadTextFromFile(QString::fromUtf16(kLastDomainPath), &domain))
        return QString();
    TraceMessage(kTraceInfo) << "Last domain: " << domain;
    return domain;
}

void Settings::WriteLastDomain(const QString &domain) const
{
    WriteTextToFile(QString::fromUtf16(kLastDomainPath), domain);
}

// The file itself is the switch: without it no user name is remembered.
QString Settings::ReadLastUser() const
{
    const QString path = QString::fromUtf16(kLastUserPath);
    const bool saved = PbaFileExists(path);
    TraceMessage(kTraceInfo) << "Save last user name == " << (saved ? "true" : "false");
    QString userName;
    if (saved)
        ReadTextFromFile(path, &userName);
    return userName;
}

void Settings::WriteLastUser(const QString &userName) const
{
    const QString path = QString::fromUtf16(kLastUserPath);
    if (PbaFileExists(path))
        WriteTextToFile(path, userName);
}

} // namespace pba
