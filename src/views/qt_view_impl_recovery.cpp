// The start of the password reset.
#include "views/qt_view_impl.h"

#include "ui_pba_main_window.h"
#include "widgets/pba_message_box.h"

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
    const kro::result_t result = m_businessLogic
                                     ? m_businessLogic->StartPasswordRecovery(m_recoveryAdapter.get())
                                     : kro::kNotInitialized;
    if (Succeeded(result, trace, kMember, __LINE__))
        CallDeferredStateChange();
}

} // namespace pba
