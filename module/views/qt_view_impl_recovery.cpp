// SPDX-License-Identifier: Apache-2.0
// The way through the password reset: how it starts, how it is left or begun anew, what follows a response.
#include "module/views/qt_view_impl.h"

#include "module/forms/ui_pba_main_window.h"
#include "module/widgets/late_focus.h"
#include "module/widgets/pba_message_box.h"

namespace pba {

namespace {

constexpr int kProceed = 3;

} // namespace

void QtViewImpl::ConnectRecoveryEntries()
{
    for (QPushButton *button : std::initializer_list<QPushButton *>{Form().startPasswordRecoveryButton,
                                                                    Form().temporaryPasswordRecoveryButton,
                                                                    Form().temporaryPasswordRecoveryButton2})
        connect(button, &QPushButton::clicked, this, &QtViewImpl::OnPasswordRecovery);
}

kro::result_t QtViewImpl::OnPasswordRecoveryDeferred()
{
    return Defer("pba::QtViewImpl::OnPasswordRecoveryDeferred", [this] { OnPasswordRecovery(); });
}

kro::result_t QtViewImpl::OnPasswordRecoveryInternalDeferred()
{
    return Defer("pba::QtViewImpl::OnPasswordRecoveryInternalDeferred",
                 [this] { OnPasswordRecoveryInternal(); });
}

void QtViewImpl::OnPasswordRecovery()
{
    const TraceScope trace("pba::QtViewImpl::OnPasswordRecovery");
    PbaMessageBox box;
    box.SetTitle(tr("Password Reset"));
    box.SetText(
        tr("You are starting the password reset procedure. You have to contact the system administrator, "
           "gave him some data and enter back other data, it can take some time.\n\nAre you sure that you "
           "want to start the password reset procedure?"));
    box.SetButton2Text(tr("CANCEL"));
    box.SetButton3Text(tr("CONTINUE"));
    RunModal(box);
    // Unlike the other confirmations: nothing but the button starts the procedure.
    if (box.Result() == kProceed)
        OnPasswordRecoveryInternal();
}

void QtViewImpl::OnPasswordRecoveryInternal()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnPasswordRecoveryInternal";
    TraceScope trace(kMember);
    CallResult result = kro::kNotInitialized;
    if (m_businessLogic)
        result = m_businessLogic->StartPasswordRecovery(m_recoveryAdapter.get());
    if (Succeeded(result, trace, kMember))
        CallDeferredStateChange();
}

void QtViewImpl::OnQuitPasswordRecovery()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnQuitPasswordRecovery";
    TraceScope trace(kMember);
    if (!ShowConfirmationMessage(tr("Password Reset: confirmation of exit"),
                                 tr("Are you sure that you want to exit the password reset procedure?"),
                                 tr("QUIT")))
        return;
    // Whatever the host makes of it, the person wants out.
    CallResult result = kro::kNotInitialized;
    if (m_recoveryLogic)
        result = (m_recoveryLogic->QuitRecovery(), kro::kOk);
    if (Succeeded(result, trace, kMember))
        CallDeferredStateChange();
}

void QtViewImpl::OnRestartPasswordRecovery()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnRestartPasswordRecovery";
    TraceScope trace(kMember);
    if (!ShowConfirmationMessage(tr("Password Reset: confirmation of restart"),
                                 tr("Are you sure that you want to restart the password reset procedure?"),
                                 tr("RESTART")))
        return;
    CallResult result = kro::kNotInitialized;
    if (m_recoveryLogic)
        result = m_recoveryLogic->RestartRecovery();
    if (Succeeded(result, trace, kMember))
        CallDeferredStateChange();
}

void QtViewImpl::OnResponseLineEdited()
{
    const TraceScope trace("pba::QtViewImpl::OnResponseLineEdited");
    Form().responseResultMessage->clear();
}

void QtViewImpl::OnResponceLineAccepted()
{
    const TraceScope trace("pba::QtViewImpl::OnResponceLineAccepted");
    Form().responseResultMessage->clear();
}

void QtViewImpl::OnResponceLineRejected()
{
    const TraceScope trace("pba::QtViewImpl::OnResponceLineRejected");
    Form().responseResultMessage->setText(
        tr("Response line is rejected. Please check it carefully and correct invalid characters."));
}

void QtViewImpl::OnResponceRejected()
{
    const TraceScope trace("pba::QtViewImpl::OnResponceRejected");
    ShowResponseOutcome(
        tr("Response is rejected. Please click the Continue button to enter response strings again."),
        &QtViewImpl::OnGotoResponse);
}

void QtViewImpl::OnResponceAccepted()
{
    const TraceScope trace("pba::QtViewImpl::OnResponceAccepted");
    ShowResponseOutcome(
        tr("Response is accepted. Please click the Continue button to specify a new password."),
        &QtViewImpl::OnGotoChangePasswordAfterRecovery);
}

// The one button leads on, or back to the first line.
void QtViewImpl::ShowResponseOutcome(const QString &text, void (QtViewImpl::*next)())
{
    Form().responseResultMessage->setText(text);
    QPushButton *button = Form().continueToChangePasswordButton;
    disconnect(button, nullptr, this, nullptr);
    connect(button, &QPushButton::clicked, this, next);
    button->show();
    button->setDefault(true);
    GiveFocus(button);
}

void QtViewImpl::OnGotoChangePasswordAfterRecovery()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnGotoChangePasswordAfterRecovery";
    TraceScope trace(kMember);
    if (Form().responseInput->AcceptedLines().IsEmpty())
        return;
    CallResult result = kro::kNotInitialized;
    if (m_recoveryLogic)
        result = m_recoveryLogic->GotoChangePassword();
    if (Succeeded(result, trace, kMember))
        CallDeferredStateChange();
}

} // namespace pba
