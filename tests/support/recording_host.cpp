#include "recording_host.h"

#include <QString>

namespace {

QByteArray Utf8(const kro::wstring_t &text)
{
    return QString::fromUtf16(text.Data(), static_cast<qsizetype>(text.Length())).toUtf8();
}

kro::wstring_t Wide(const QByteArray &text)
{
    return kro::wstring_t(reinterpret_cast<const char16_t *>(QString::fromUtf8(text).utf16()));
}

} // namespace

kro::result_t RecordingHost::Note(const QByteArray &member, const QByteArray &arguments)
{
    calls.append(member + arguments);
    if (const auto action = actions.find(member); action != actions.end())
        std::function<void()>(action->second)();
    const auto result = results.find(member);
    return result == results.end() ? kro::kOk : result->second;
}

kro::result_t RecordingHost::Init(pba::IMainView *mainView)
{
    view = mainView;
    return Note("Init");
}

kro::result_t RecordingHost::UpdateConnectedTokens(bool *mustChange)
{
    *mustChange = screenMustChange;
    return Note("UpdateConnectedTokens");
}

kro::result_t RecordingHost::CheckTokensConnected(bool *connected)
{
    *connected = tokensConnected;
    return Note("CheckTokensConnected");
}

kro::result_t RecordingHost::StartLoginByPassword(pba::ILoginByPasswordView *handed)
{
    passwordView = handed;
    if (!silent)
        handed->SetLogic(this);
    return Note("StartLoginByPassword");
}

kro::result_t RecordingHost::StartPasswordRecovery(pba::IPasswordRecoveryView *handed)
{
    recoveryView = handed;
    if (!silent)
        handed->SetLogic(this);
    return Note("StartPasswordRecovery");
}

kro::result_t RecordingHost::StartLoginByToken(pba::ILoginByTokenView *handed)
{
    tokenView = handed;
    if (!silent)
        handed->SetLogic(this);
    return Note("StartLoginByToken");
}

kro::result_t RecordingHost::StartOperatingSystem()
{
    return Note("StartOperatingSystem");
}

kro::result_t RecordingHost::IsAutologonSuppressed(bool *suppressed)
{
    *suppressed = autologonSuppressed;
    return Note("IsAutologonSuppressed");
}

kro::result_t RecordingHost::Login(const kro::wstring_t &loginDomain, const kro::wstring_t &loginUserName,
                                   const kro::wstring_t &password)
{
    return Note("Login", "(" + Utf8(loginDomain) + "," + Utf8(loginUserName) + "," + Utf8(password) + ")");
}

kro::result_t RecordingHost::ConfirmLoggedIn()
{
    return Note("ConfirmLoggedIn");
}

kro::result_t RecordingHost::GetPasswordChangeInfo(bool *allowed, kro::wstring_t *title,
                                                   kro::wstring_t *message)
{
    *allowed = changeAllowed;
    *title = Wide("Not now");
    *message = Wide("The password was changed today.");
    return Note("GetPasswordChangeInfo");
}

kro::result_t RecordingHost::PrepareChangePassword(kro::wstring_t *outDomain, kro::wstring_t *outUserName)
{
    *outDomain = Wide(domain);
    *outUserName = Wide(userName);
    return Note("PrepareChangePassword");
}

kro::result_t RecordingHost::ChangePassword(const kro::wstring_t &newPassword)
{
    return Note("ChangePassword", "(" + Utf8(newPassword) + ")");
}

kro::result_t RecordingHost::CancelChangePassword()
{
    return Note("CancelChangePassword");
}

kro::result_t RecordingHost::Reserved()
{
    return Note("Reserved");
}

kro::result_t RecordingHost::GetTokens(kro::vector_t<pba::TokenRecord> *)
{
    return Note("GetTokens");
}

kro::result_t RecordingHost::LoginByToken(std::int32_t index, const kro::string_t &pin)
{
    return Note("LoginByToken", "(" + QByteArray::number(index) + "," + pin.Data() + ")");
}

kro::result_t RecordingHost::SetEntropy(const kro::vector_t<std::uint8_t> &)
{
    return Note("SetEntropy");
}

kro::result_t RecordingHost::CheckResponseLine(const kro::string_t &line)
{
    return Note("CheckResponseLine", QByteArray("(") + line.Data() + ")");
}

kro::result_t RecordingHost::CheckResponse(const kro::vector_t<kro::string_t> &, bool *, bool *)
{
    return Note("CheckResponse");
}

kro::result_t RecordingHost::GotoChangePassword()
{
    return Note("GotoChangePassword");
}

bool RecordingHost::IsRecoveryInProgress()
{
    Note("IsRecoveryInProgress");
    return recoveryInProgress;
}

kro::result_t RecordingHost::QuitRecovery()
{
    return Note("QuitRecovery");
}

kro::result_t RecordingHost::RestartRecovery()
{
    return Note("RestartRecovery");
}
