#include "host/screen/password_recovery.h"

#include "host/screen/error_messages.h"
#include "host/screen/guarded.h"
#include "host/log.h"
#include "pba/view.h"
#include "volume/recovery/challenge.h"
#include "host/screen/scopes.h"

namespace host {
namespace {

using volume::Error;

constexpr std::uint32_t kEntropyBytes = 32;
constexpr int kMaxRejections = 5; // far more than mistypings that the check digits let pass

} // namespace

PasswordRecovery::PasswordRecovery(OsStart &osStart, PasswordLogin &passwordLogin, const Texts &texts)
    : m_volume(osStart.GetVolume())
    , m_osStart(osStart)
    , m_passwordLogin(passwordLogin)
    , m_texts(texts)
{
}

kro::result_t PasswordRecovery::Start(pba::IPasswordRecoveryView *view, pba::IMainView *mainView)
{
    return Guarded([&] {
        m_view = view;
        m_mainView = mainView;
        view->SetLogic(this);
        End();
        std::optional<recovery::Found> found = recovery::Find(m_volume);
        if (!found) {
            m_texts.Show(view, kNoPasswordRecovery);
            return kro::kOk;
        }
        // Now, rather than after the call to the administrator.
        if (m_volume.CheckWritable() != Error::None) {
            m_texts.Show(view, kRecoveryCannotSave);
            return kro::kOk;
        }
        m_found = std::move(found);
        return Begin();
    });
}

kro::result_t PasswordRecovery::Begin()
{
    m_osStart.Forget();
    m_ephemeral.reset();
    m_acceptedLines = 0;
    m_rejections = 0;
    return m_view->StartEntropyCollection(kEntropyBytes);
}

void PasswordRecovery::End()
{
    m_osStart.Forget();
    m_ephemeral.reset();
    m_found.reset();
}

kro::result_t PasswordRecovery::SetEntropy(const kro::vector_t<std::uint8_t> &entropy)
{
    if (!m_found)
        return kro::kInvalidState;
    return Guarded([&] {
        m_ephemeral = recovery::MakeEphemeral({entropy.Data(), entropy.Size()});
        const recovery::Challenge challenge =
            recovery::MakeChallenge(m_found->enrolment.identity, recovery::PublicKeyOf(*m_ephemeral));
        kro::vector_t<kro::string_t> strings;
        for (const std::string &string : recovery::EncodeChallenge(challenge))
            strings.PushBack(kro::string_t(string));
        Log(kLogCalls, "Recovery: the challenge is made.");
        return m_view->ShowChallenge(strings);
    });
}

// Anything but kFalse would let the line pass, a failure as well.
kro::result_t PasswordRecovery::CheckResponseLine(const kro::string_t &line)
{
    const kro::result_t result = Guarded([&] {
        const auto code = m_ephemeral ? recovery::NormaliseCode(line.View()) : std::nullopt;
        return code && recovery::IsResponseLine(code->View(), m_acceptedLines) ? kro::kOk : kro::kFalse;
    });
    return result == kro::kOk ? kro::kOk : kro::kFalse;
}

kro::result_t PasswordRecovery::CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                              bool *valid)
{
    const std::size_t count = lines.Size();
    m_acceptedLines = 0;
    if (!m_found || !m_ephemeral || count > recovery::kResponseLines)
        return kro::kOk;
    return Guarded([&] {
        recovery::ResponseLines codes;
        for (std::size_t row = 0; row < count; ++row) {
            auto code = recovery::NormaliseCode(lines[row].View());
            if (!code || !recovery::IsResponseLine(code->View(), row))
                return kro::kOk;
            codes[row] = std::move(*code);
        }
        *complete = count == recovery::kResponseLines;
        *valid = !*complete || TryResponse(codes);
        if (!*complete)
            m_acceptedLines = count;
        return kro::kOk;
    });
}

// The keyslot decides; the tag only says for whom.
bool PasswordRecovery::TryResponse(const recovery::ResponseLines &lines)
{
    const auto response = recovery::Response::Open(*m_ephemeral, m_found->enrolment, lines);
    volume::Secret volumeKey;
    Error error = Error::WrongPassword;
    if (response) {
        const BusyScope busy;
        error = m_volume.OpenKeyslot(m_found->enrolment.keyslots.front(),
                                     recovery::PassphraseOf(response->Secret()), &volumeKey);
    }
    if (error == Error::None)
        return LetIn(*response, std::move(volumeKey));
    Reject(error);
    return false;
}

bool PasswordRecovery::LetIn(const recovery::Response &response, volume::Secret volumeKey)
{
    // From here on somebody has seen the secret, whatever follows.
    if (const Error error = recovery::MarkUsed(m_volume, m_found->enrolment.identity); error != Error::None)
        Log(kLogErrors, std::string("Recovery: the use cannot be noted: ") + volume::Describe(error));
    const std::optional<volume::UserName> name = response.FindUser(m_volume.Users());
    if (!name) {
        Log(kLogErrors, "Recovery: the response is right, but names nobody here.");
        m_texts.Show(m_view, kRecoveryUnknownUser);
        return false;
    }
    Log(kLogCalls, "Recovery: the response is right.");
    m_osStart.Recover(*name, std::move(volumeKey));
    return true;
}

void PasswordRecovery::Reject(Error error)
{
    Log(kLogErrors, std::string("Recovery: response refused: ") + volume::Describe(error));
    if (error != Error::WrongPassword) {
        m_texts.Show(m_view, MessageFor(error));
        return;
    }
    if (++m_rejections < kMaxRejections)
        return;
    m_ephemeral.reset();
    m_texts.Show(m_view, kRecoveryRejectedTooOften);
}

kro::result_t PasswordRecovery::GotoChangePassword()
{
    if (!m_osStart.HasRecovered())
        return kro::kInvalidState;
    return Guarded([&] {
        pba::ILoginByPasswordView *view = m_mainView->GetLoginByPasswordView();
        if (!view)
            return kro::kUnexpected;
        m_passwordLogin.Attach(view); // no login may have happened
        return m_passwordLogin.RequireNewPassword(kRecoveryNewPassword);
    });
}

kro::result_t PasswordRecovery::QuitRecovery()
{
    if (!m_mainView)
        return kro::kNotInitialized;
    End();
    return m_mainView->ShowInitialScreen();
}

kro::result_t PasswordRecovery::RestartRecovery()
{
    return m_found ? Guarded([&] { return Begin(); }) : kro::kInvalidState;
}

} // namespace host
