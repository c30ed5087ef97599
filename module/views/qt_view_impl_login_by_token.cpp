// SPDX-License-Identifier: Apache-2.0
// The token pages, and the check whether tokens that came or went change the screen.
#include "module/views/qt_view_impl.h"

#include <QApplication>
#include <QScopedValueRollback>

#include "pbe/screen.h"
#include "module/forms/ui_pba_main_window.h"
#include "module/views/host_string.h"
#include "module/views/report_lines.h"
#include "module/views/screen_traits.h"

namespace pba {

namespace {

// Lets the wait cursor be painted before the host looks at its tokens.
constexpr int kTokenCheckDelayMs = 1;

bool FollowsTokens(int screen)
{
    return screen == kScreenLoginByPassword || screen == kScreenNoTokens || screen == kScreenLoginByToken;
}

} // namespace

void QtViewImpl::ConnectTokenPage()
{
    connect(Form().tokensList, &TokensList::PinEntered, this, &QtViewImpl::OnTokenPinEntered);
    connect(Form().tokensList, &TokensList::ForgotYourPinCodeButtonPressed, this,
            &QtViewImpl::OnPasswordRecovery);
    Form().tokensList->Clear();
}

void QtViewImpl::ShowLoginByTokenScreen()
{
    static constexpr char kMember[] = "pba::QtViewImpl::ShowLoginByTokenScreen";
    TraceScope trace(kMember);
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->StartLoginByToken(m_tokenAdapter.get()) : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kShowLoginByToken))
        return;
    const bool single = UpdateTokenList() == 1;
    Form().singleTokenLabel->setVisible(single);
    Form().multipleTokensLabel->setVisible(!single);
    SetScreen(kScreenLoginByToken);
}

int QtViewImpl::UpdateTokenList()
{
    static constexpr char kMember[] = "pba::QtViewImpl::UpdateTokenList";
    TraceScope trace(kMember);
    kro::vector_t<TokenRecord> tokens;
    const kro::result_t result = m_tokenLogic ? m_tokenLogic->GetTokens(&tokens) : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kUpdateTokenList))
        return 0;
    Form().tokensList->Clear();
    for (const TokenRecord &token : tokens)
        Form().tokensList->AddToken(FromHostString(token.name), false);
    Form().tokensList->FocusFirstToken();
    return static_cast<int>(tokens.Size());
}

void QtViewImpl::OnTokenPinEntered(int index, const QString &pin)
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnTokenPinEntered";
    TraceScope trace(kMember);
    kro::result_t result = kro::kNotInitialized;
    if (m_tokenLogic) {
        const Secret secret(ToHostUtf8(pin));
        result = m_tokenLogic->LoginByToken(index, secret.Get());
    }
    if (Succeeded(result, trace, kMember, report_line::kOnTokenPinEntered))
        CallDeferredStateChange();
}

bool QtViewImpl::IsAnyTokenConnected()
{
    static constexpr char kMember[] = "pba::QtViewImpl::IsAnyTokenConnected";
    TraceScope trace(kMember);
    bool connected = false;
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->CheckTokensConnected(&connected) : kro::kNotInitialized;
    return Succeeded(result, trace, kMember, report_line::kIsAnyTokenConnected) && connected;
}

void QtViewImpl::OnUpdateConnectedTokens()
{
    const TraceScope trace("pba::QtViewImpl::OnUpdateConnectedTokens");
    // A message that has only just come up may not be the active window yet.
    const bool inFront = isActiveWindow() && !QApplication::activeModalWidget();
    if ((m_options & kOptionLoginByToken) == 0 || !FollowsTokens(CurrentScreen()) || !inFront)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QPbeScreen::Current()->SetPointerVisible(true);
    QTimer::singleShot(kTokenCheckDelayMs, this, &QtViewImpl::OnUpdateConnectedTokensSlot);
}

void QtViewImpl::OnUpdateConnectedTokensSlot()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnUpdateConnectedTokensSlot";
    TraceScope trace(kMember);
    const QScopedValueRollback checking(m_checkingTokens, true);
    bool screenMustChange = false;
    kro::result_t result = kro::kOk;
    // A message that has come up since may be the host's, in the middle of a call. When it is closed, tokens
    // are looked at anyway.
    const bool inFront = !QApplication::activeModalWidget();
    if (inFront)
        result = m_businessLogic ? m_businessLogic->UpdateConnectedTokens(&screenMustChange)
                                 : kro::kNotInitialized;
    QGuiApplication::restoreOverrideCursor();
    m_startupBusy = false;
    UpdatePointer();
    if (!inFront || !Succeeded(result, trace, kMember, report_line::kOnUpdateConnectedTokens))
        return;
    // The person may have gone on, or the host shown another page.
    if (screenMustChange && FollowsTokens(CurrentScreen()))
        ShowInitialScreenInternal();
}

} // namespace pba
