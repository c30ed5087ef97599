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

kro::result_t RecordingHost::GetTokens(kro::vector_t<pba::TokenRecord> *list)
{
    for (const QByteArray &name : tokens)
        list->PushBack({name.constData(), "id"});
    return Note(__func__);
}

kro::result_t RecordingHost::LoginByToken(std::int32_t index, const kro::string_t &pin)
{
    return Note(__func__, "(" + QByteArray::number(index) + "," + pin.Data() + ")");
}

kro::result_t RecordingHost::SetEntropy(const kro::vector_t<std::uint8_t> &bytes)
{
    entropy = QByteArray(reinterpret_cast<const char *>(bytes.Data()), static_cast<qsizetype>(bytes.Size()));
    return Note(__func__);
}

kro::result_t RecordingHost::CheckResponseLine(const kro::string_t &line)
{
    return Note(__func__, QByteArray("(") + line.Data() + ")");
}

kro::result_t RecordingHost::CheckResponse(const Lines &lines, bool *complete, bool *valid)
{
    *complete = responseComplete;
    *valid = responseValid;
    return Note(__func__, "(" + QByteArray::number(static_cast<int>(lines.Size())) + ")");
}
