// SPDX-License-Identifier: Apache-2.0
// Login by user name, password and domain, and the automatic logon from a file.
#include "module/views/qt_view_impl.h"

#include <QFile>
#include <QTextStream>

#include "module/settings/paths.h"
#include "module/settings/pba_file.h"
#include "module/forms/ui_pba_main_window.h"
#include "module/views/host_string.h"
#include "module/views/report_lines.h"
#include "module/views/screen_traits.h"
#include "module/widgets/late_focus.h"

namespace pba {

namespace {

// The page is seen for this long before an automatic logon fills it, and again before it runs.
constexpr int kAutologonDelayMs = 2000;

void TraceAutologon(const char *before, const char *after)
{
    TraceMessage(kTraceInfo) << "Autologon: " << before << "\"" << kAutologonPath << "\"" << after;
}

void FocusAndSelect(QLineEdit *field)
{
    field->setFocus();
    field->selectAll();
}

} // namespace

void QtViewImpl::ConnectLoginPage()
{
    connect(Form().loginButton, &QPushButton::clicked, this, &QtViewImpl::OnLogin);
    connect(Form().loginUserName, &QLineEdit::textChanged, this, &QtViewImpl::OnLoginOrPasswordTextChanged);
    connect(Form().loginPassword, &QLineEdit::textChanged, this, &QtViewImpl::OnLoginOrPasswordTextChanged);
    connect(Form().changeDomainButton, &QPushButton::clicked, this, &QtViewImpl::OnChangeDomain);
}

void QtViewImpl::ShowLoginByPasswordScreen()
{
    static constexpr char kMember[] = "pba::QtViewImpl::ShowLoginByPasswordScreen";
    TraceScope trace(kMember);
    SetScreen(kScreenLoginByPassword);
    bool suppressed = false;
    if (m_passwordLogic && !Succeeded(m_passwordLogic->IsAutologonSuppressed(&suppressed), trace, kMember,
                                      report_line::kShowLoginByPassword))
        return;
    if (!suppressed)
        QTimer::singleShot(kAutologonDelayMs, Qt::PreciseTimer, this, &QtViewImpl::TryToAutologon);
    CallDeferredStateChange();
}

void QtViewImpl::SetUpLoginPage()
{
    const bool domainSaved = m_settings->IsLastDomainSaved();
    if (domainSaved)
        HideDomainInputField();
    else
        ShowDomainInputField();
    Form().loginUserName->setText(m_settings->ReadLastUser());
    // The domain's set-up has given the focus to a field of its own.
    if (!domainSaved)
        GiveFocus(Form().loginDomain);
    else if (Form().loginUserName->text().isEmpty())
        GiveFocus(Form().loginUserName);
    else
        GiveFocus(Form().loginPassword);
}

void QtViewImpl::HideDomainInputField()
{
    Form().domainLabel->setText(tr("Domain: %0").arg(m_settings->ReadLastDomain(), 0, u' '));
    Form().domainLabel->show();
    Form().changeDomainButton->show();
    Form().loginDomain->hide();
    // The hidden field is what a login sends.
    Form().loginDomain->setText(m_settings->ReadLastDomain());
    GiveFocus(Form().loginUserName);
}

void QtViewImpl::ShowDomainInputField()
{
    Form().domainLabel->hide();
    Form().changeDomainButton->hide();
    Form().loginDomain->show();
    Form().loginDomain->clear();
    GiveFocus(Form().loginDomain);
}

void QtViewImpl::OnChangeDomain()
{
    const TraceScope trace("pba::QtViewImpl::OnChangeDomain");
    ShowDomainInputField();
}

void QtViewImpl::OnLoginOrPasswordTextChanged()
{
    const TraceScope trace("pba::QtViewImpl::OnLoginOrPasswordTextChanged");
    Form().changePasswordButton->setEnabled(!Form().loginUserName->text().isEmpty() &&
                                            !Form().loginPassword->text().isEmpty());
}

bool QtViewImpl::CheckLoginFields()
{
    if (Form().loginUserName->text().isEmpty()) {
        ShowMessage(tr("User name field is empty"), tr("User name field is empty. Please enter a user name."),
                    kSeverityWarning, kMessagePlain, false);
        return false;
    }
    if (Form().loginPassword->text().isEmpty()) {
        ShowMessage(tr("Password field is empty"), tr("Password field is empty. Please enter a password."),
                    kSeverityWarning, kMessagePlain, false);
        return false;
    }
    return true;
}

void QtViewImpl::OnLogin()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnLogin";
    TraceScope trace(kMember);
    if (!CheckLoginFields())
        return;
    kro::result_t result = m_businessLogic ? m_businessLogic->StartLoginByPassword(m_passwordAdapter.get())
                                           : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kOnLoginStart))
        return;
    // Taken before the call: a message that the host shows inside may lead to a screen that empties the
    // fields.
    const QString domain = Form().loginDomain->text();
    const QString userName = Form().loginUserName->text();
    {
        const Secret password(ToHostString(Form().loginPassword->text()));
        result = m_passwordLogic
                     ? m_passwordLogic->Login(ToHostString(domain), ToHostString(userName), password.Get())
                     : kro::kNotInitialized;
    }
    if (!Succeeded(result, trace, kMember, report_line::kOnLoginLogin))
        return;
    m_settings->WriteLastDomain(domain);
    m_settings->WriteLastUser(userName);
    CallDeferredStateChange();
}

void QtViewImpl::SelectPassword()
{
    FocusAndSelect(Form().loginPassword);
}

void QtViewImpl::SelectUserName()
{
    FocusAndSelect(Form().loginUserName);
}

void QtViewImpl::TryToAutologon()
{
    const TraceScope trace("pba::QtViewImpl::TryToAutologon");
    QString userName;
    QString password;
    if (!ReadAutologonFile(&userName, &password))
        return;
    TraceMessage(kTraceInfo) << "Autologon: try to perform autologon.";
    Form().loginUserName->setText(userName);
    Form().loginPassword->setText(password);
    QTimer::singleShot(kAutologonDelayMs, Qt::PreciseTimer, this, &QtViewImpl::OnLogin);
}

bool QtViewImpl::ReadAutologonFile(QString *userName, QString *password) const
{
    const QString path = QString::fromUtf16(kAutologonPath);
    if (!PbaFileExists(path)) {
        TraceAutologon("cannot perform autologon: file ", " does not exist.");
        return false;
    }
    TraceAutologon("file ", " exists. Try to open it.");
    QFile file;
    if (kro::Failed(OpenPbaFile(file, path, QIODevice::ReadOnly | QIODevice::Text))) {
        TraceAutologon("cannot perform autologon: file ", " cannot be opened for reading.");
        return false;
    }
    TraceAutologon("file ", " opened for reading.");
    if (file.size() == 0) {
        TraceAutologon("cannot perform autologon: file ", " is empty.");
        return false;
    }
    // UTF-8, unless a byte-order mark says otherwise.
    QTextStream stream(&file);
    *userName = stream.readLine();
    if (stream.atEnd()) {
        TraceAutologon("cannot perform autologon: file ",
                       " contains only one line. Password should be located in second line.");
        return false;
    }
    *password = stream.readLine();
    return true;
}

} // namespace pba
