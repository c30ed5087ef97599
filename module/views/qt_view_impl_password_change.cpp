// SPDX-License-Identifier: Apache-2.0
// What follows a login, and the page on which a new password is set.
#include "module/views/qt_view_impl.h"

#include "module/forms/ui_pba_main_window.h"
#include "module/views/host_string.h"
#include "module/views/report_lines.h"
#include "module/views/screen_traits.h"

namespace pba {

namespace {

constexpr int kSavedHopMs = 1;

QString UserLabel(const QString &domain, const QString &userName)
{
    if (domain.isEmpty())
        return QtViewImpl::tr("User: %0").arg(userName, 0, u' ');
    return QtViewImpl::tr("Domain: %0, User: %1").arg(domain, userName);
}

} // namespace

void QtViewImpl::ConnectPasswordChangePage()
{
    connect(Form().changePasswordButton, &QPushButton::clicked, this, &QtViewImpl::OnChangePassword);
    connect(Form().saveNewPasswordButton, &QPushButton::clicked, this, &QtViewImpl::OnSavePassword);
    connect(Form().cancelPasswordChange, &QPushButton::clicked, this, &QtViewImpl::OnCancelChangePassword);
    connect(m_savedTimer, &QTimer::timeout, this, &QtViewImpl::CallDeferredStateChange);
}

void QtViewImpl::OnChangePassword()
{
    const TraceScope trace("pba::QtViewImpl::OnChangePassword");
    // Stays set when the login fails: the next one that succeeds leads to the page.
    m_changePasswordAfterLogin = true;
    OnLogin();
}

kro::result_t QtViewImpl::ShowLoggedIn()
{
    return Defer("pba::QtViewImpl::ShowLoggedIn", [this] { ShowLoggedInInternal(); });
}

void QtViewImpl::ShowLoggedInInternal()
{
    TraceScope trace("pba::QtViewImpl::ShowLoggedInInternal");
    if (std::exchange(m_changePasswordAfterLogin, false))
        OfferPasswordChange(trace);
    else
        StartOperatingSystemAfterLogin(trace);
}

void QtViewImpl::StartOperatingSystemAfterLogin(TraceScope &trace)
{
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->StartOperatingSystem() : kro::kNotInitialized;
    if (Succeeded(result, trace, "pba::QtViewImpl::ShowLoggedInInternal", report_line::kShowLoggedInStartOs))
        CallDeferredStateChange();
}

void QtViewImpl::OfferPasswordChange(TraceScope &trace)
{
    static constexpr char kMember[] = "pba::QtViewImpl::ShowLoggedInInternal";
    bool allowed = false;
    kro::wstring_t title;
    kro::wstring_t message;
    kro::result_t result = m_passwordLogic
                               ? m_passwordLogic->GetPasswordChangeInfo(&allowed, &title, &message)
                               : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kShowLoggedInChangeInfo))
        return;
    if (allowed) {
        const QString prompt =
            tr("Password change procedure initiated. Please enter and confirm new password.");
        if (ShowChangePasswordInternal(tr("Enter new password"), prompt, false))
            CallDeferredStateChange();
        return;
    }
    ShowMessage(FromHostString(title), FromHostString(message), kSeverityError, kMessagePlain, false);
    result = m_passwordLogic ? m_passwordLogic->ConfirmLoggedIn() : kro::kNotInitialized;
    if (Succeeded(result, trace, kMember, report_line::kShowLoggedInConfirm))
        CallDeferredStateChange();
}

kro::result_t QtViewImpl::ShowChangePassword(const QString &title, const QString &message, bool hideCancel)
{
    return Defer("pba::QtViewImpl::ShowChangePassword",
                 [=, this] { ShowChangePasswordInternal(title, message, hideCancel); });
}

bool QtViewImpl::ShowChangePasswordInternal(const QString &title, const QString &message, bool hideCancel)
{
    static constexpr char kMember[] = "pba::QtViewImpl::ShowChangePasswordInternal";
    TraceScope trace(kMember);
    m_changePasswordAfterLogin = false;
    Form().changePasswordTitle->setText(title);
    Form().changePasswordMessage->setText(message);
    Form().cancelPasswordChange->setVisible(!hideCancel);
    kro::wstring_t domain;
    kro::wstring_t userName;
    const kro::result_t result =
        m_passwordLogic ? m_passwordLogic->PrepareChangePassword(&domain, &userName) : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kShowChangePassword))
        return false;
    Form().changePasswordUserNameLabel->setText(UserLabel(FromHostString(domain), FromHostString(userName)));
    SetScreen(kScreenChangePassword);
    return true;
}

void QtViewImpl::OnSavePassword()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnSavePassword";
    TraceScope trace(kMember);
    // Return pressed once more while the host was at work: the password that it has just taken is saved.
    if (m_savedTimer->isActive())
        return;
    if (Form().newPassword->text() != Form().confirmNewPassword->text()) {
        ShowMessage(tr("Wrong password"),
                    tr("New password is not confirmed. Please confirm your new password."), kSeverityWarning,
                    kMessagePlain, false);
        return;
    }
    kro::result_t result = kro::kNotInitialized;
    if (m_passwordLogic) {
        const Secret newPassword(ToHostString(Form().newPassword->text()));
        result = m_passwordLogic->ChangePassword(newPassword.Get());
    }
    if (Succeeded(result, trace, kMember, report_line::kOnSavePassword))
        m_savedTimer->start(kSavedHopMs);
}

void QtViewImpl::OnCancelChangePassword()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnCancelChangePassword";
    TraceScope trace(kMember);
    const kro::result_t result =
        m_passwordLogic ? m_passwordLogic->CancelChangePassword() : kro::kNotInitialized;
    if (Succeeded(result, trace, kMember, report_line::kOnCancelChangePassword))
        CallDeferredStateChange();
}

} // namespace pba
