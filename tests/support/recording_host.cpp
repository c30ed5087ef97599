#include "recording_host.h"

#include <QString>

static QByteArray Utf8(const kro::wstring_t &text)
{
    return QString::fromUtf16(text.Data(), static_cast<qsizetype>(text.Length())).toUtf8();
}

kro::result_t RecordingHost::Note(const QByteArray &member, const QByteArray &arguments)
{
    calls.append(member + arguments);
    if (const auto action = actions.find(member); action != actions.end())
        std::function<void()>(action->second)();
    const auto result = results.find(member);
    return result == results.end() ? kro::kOk : result->second;
}

kro::result_t RecordingHost::Login(const Wide &loginDomain, const Wide &loginUserName, const Wide &password)
{
    return Note(__func__, "(" + Utf8(loginDomain) + "," + Utf8(loginUserName) + "," + Utf8(password) + ")");
}

kro::result_t RecordingHost::ChangePassword(const Wide &newPassword)
{
    return Note(__func__, "(" + Utf8(newPassword) + ")");
}
