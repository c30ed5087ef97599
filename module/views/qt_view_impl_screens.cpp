// SPDX-License-Identifier: Apache-2.0
// Which page is shown, and the state changes that wait for the host's call to return.
#include "module/views/qt_view_impl.h"

#include <utility>

#include <QScopedValueRollback>

#include "module/forms/ui_pba_main_window.h"
#include "module/views/screen_traits.h"
#include "module/widgets/late_focus.h"
#include "module/widgets/secret_field.h"

namespace pba {

namespace {

// A host that asks for a screen each time it is asked about one must not use up the stack.
constexpr int kStateChangeDepthLimit = 16;

} // namespace

int QtViewImpl::CurrentScreen() const
{
    return Form().stackedWidget->currentIndex();
}

void QtViewImpl::SetScreen(int index)
{
    const TraceScope trace("pba::QtViewImpl::SetScreen");
    TraceMessage(kTraceDetail) << "Screen index: " << index;
    const ScreenTraits &traits = TraitsOf(index);
    UpdateDebugLoggingWarning(index);
    SetCollectingEntropy(index == kScreenCollectEntropy);
    Form().stackedWidget->ShowPage(index);
    ClearDefaultButtons();
    const bool inProgress = traits.recovery && IsRecoveryInProgress();
    // The host was asked, and may have shown another page in the middle of it.
    if (CurrentScreen() != index)
        return;
    Form().quitRecoveryButton->setVisible(inProgress);
    Form().restartRecoveryButton->setVisible(traits.recovery);
    SetUpScreen(index);
    Form().helpButton->setVisible(traits.helpButton);
    // Nothing more is painted once the host has switched the screen off.
    if (index == kScreenStartingWindows)
        repaint();
}

// All of them: when a dialog is first shown, the toolkit makes some button the default, be it a link.
void QtViewImpl::ClearDefaultButtons()
{
    const auto buttons = findChildren<QPushButton *>();
    for (QPushButton *button : buttons)
        button->setDefault(false);
}

bool QtViewImpl::IsRecoveryInProgress()
{
    if (m_recoveryLogic)
        return m_recoveryLogic->IsRecoveryInProgress();
    ReportInternalError(kro::kNotInitialized, "pba::QtViewImpl::SetScreen", __LINE__);
    return false;
}

void QtViewImpl::SetUpScreen(int index)
{
    const ScreenTraits &traits = TraitsOf(index);
    if (index == kScreenLoginByPassword)
        SetUpLoginPage();
    if (index == kScreenResponse)
        Form().continueToChangePasswordButton->hide();
    if (traits.defaultButton)
        traits.defaultButton(Form())->setDefault(true);
    if (!traits.focus) {
        // Else the toolkit would move the focus on to the bottom row, where a stray key opens a menu.
        if (index != kScreenLoginByPassword)
            Form().stackedWidget->currentWidget()->setFocus();
        return;
    }
    GiveFocus(traits.focus(Form()));
}

kro::result_t QtViewImpl::Defer(const char *name, StateChange change)
{
    const TraceScope trace(name);
    m_pendingStateChange = std::move(change);
    return kro::kOk;
}

void QtViewImpl::CallDeferredStateChange()
{
    const TraceScope trace("pba::QtViewImpl::CallDeferredStateChange");
    if (!m_pendingStateChange)
        return;
    if (m_stateChangeDepth >= kStateChangeDepthLimit) {
        QTimer::singleShot(1, this, &QtViewImpl::CallDeferredStateChange);
        return;
    }
    const StateChange change = std::exchange(m_pendingStateChange, nullptr);
    const QScopedValueRollback depth(m_stateChangeDepth, m_stateChangeDepth + 1);
    change();
}

kro::result_t QtViewImpl::ShowInitialScreen()
{
    return Defer("pba::QtViewImpl::ShowInitialScreen", [this] { ShowInitialScreenInternal(); });
}

void QtViewImpl::ShowInitialScreenInternal()
{
    const TraceScope trace("pba::QtViewImpl::ShowInitialScreenInternal");
    Form().loginDomain->clear();
    Form().loginUserName->clear();
    EmptySecretField(Form().loginPassword);

    const bool byPassword = (m_options & kOptionLoginByPassword) != 0;
    const bool byToken = (m_options & kOptionLoginByToken) != 0;
    if (byToken && IsAnyTokenConnected()) {
        ShowLoginByTokenScreen();
    } else if (byPassword) {
        Form().tokenAuthenticationPrompt->setVisible(byToken);
        ShowLoginByPasswordScreen();
    } else {
        SetScreen(byToken ? kScreenNoTokens : kScreenNoUsers);
    }
}

} // namespace pba
