// SPDX-License-Identifier: Apache-2.0
// A host with a fixed set of users in memory, to begin another one with: it loads the view, prints each of
// its calls and lets whoever knows a password through. Nothing of a toolkit, nothing but include/.
//   example_host ROOT     ROOT/pba/ holds the view's files; all of them may be missing
#include <algorithm>
#include <cstdio>
#include <string_view>

#include <dlfcn.h>

#include "pba/view.h"
#include "pbe/application.h"
#include "pbe/files.h"

namespace {

struct User
{
    std::u16string_view domain;
    std::u16string_view name;
    kro::wstring_t password;
};

// Prints what the view asks; what is typed into a password field is no business of a terminal.
void Tell(const char *call)
{
    std::printf("%s\n", call);
    std::fflush(stdout);
}

// No exception may reach the view: where memory ends, so does this program.
class ExampleHost final : public pba::IBusinessLogic, public pba::ILoginByPasswordLogic
{
public:
    // The login page asks its logic as soon as it is shown, so that is handed over before.
    kro::result_t Init(pba::IMainView *view) noexcept override
    {
        Tell("Init");
        m_view = view;
        m_loginView = view->GetLoginByPasswordView();
        if (!m_loginView)
            return kro::kUnexpected;
        m_loginView->SetLogic(this);
        view->SetOptions(pba::kOptionLoginByPassword);
        return view->ShowInitialScreen();
    }

    // Asked again and again: not worth a line.
    kro::result_t UpdateConnectedTokens(bool *) noexcept override { return kro::kOk; }
    kro::result_t CheckTokensConnected(bool *) noexcept override { return kro::kOk; }

    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *view) noexcept override
    {
        Tell("StartLoginByPassword");
        m_loginView = view;
        view->SetLogic(this);
        return kro::kOk;
    }

    // A host that offers recovery answers with a logic of its own; this one says that it has none.
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *view) noexcept override
    {
        Tell("StartPasswordRecovery");
        return view->ShowMessage(u"No recovery", u"This host has no help for a forgotten password.",
                                 pba::kSeverityInformation, pba::kMessagePlain);
    }

    // Never asked without kOptionLoginByToken.
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *) noexcept override { return kro::kNotSupported; }

    // Being asked proves nothing: whether somebody has logged on is the host's own knowledge.
    kro::result_t StartOperatingSystem() noexcept override
    {
        Tell("StartOperatingSystem");
        if (!m_user)
            return kro::kProhibited;
        m_started = true;
        m_view->ShowStartingOsScreen();
        return m_view->Close();
    }

    // The view then tries ROOT/pba/autolgn.txt, where there is one.
    kro::result_t IsAutologonSuppressed(bool *suppressed) noexcept override
    {
        Tell("IsAutologonSuppressed");
        *suppressed = m_autologonTried;
        m_autologonTried = true;
        return kro::kOk;
    }

    // A request such as ShowLoggedIn is carried out when this has returned.
    kro::result_t Login(const kro::wstring_t &domain, const kro::wstring_t &userName,
                        const kro::wstring_t &password) noexcept override
    {
        Tell("Login");
        const auto user = std::find_if(std::begin(m_users), std::end(m_users), [&](const User &known) {
            return known.domain == domain.View() && known.name == userName.View() &&
                   known.password == password;
        });
        m_user = user == std::end(m_users) ? nullptr : user;
        if (m_user)
            return m_loginView->ShowLoggedIn();
        m_loginView->ShowMessage(u"Login failed", u"The user name or the password is wrong.",
                                 pba::kSeverityWarning, pba::kMessageOffersRecovery);
        m_loginView->SelectPassword();
        return kro::kOk;
    }

    kro::result_t ConfirmLoggedIn() noexcept override
    {
        Tell("ConfirmLoggedIn");
        return m_loginView->ShowLoggedIn();
    }

    kro::result_t GetPasswordChangeInfo(bool *changeAllowed, kro::wstring_t *,
                                        kro::wstring_t *) noexcept override
    {
        Tell("GetPasswordChangeInfo");
        *changeAllowed = m_user != nullptr;
        return kro::kOk;
    }

    kro::result_t PrepareChangePassword(kro::wstring_t *domain, kro::wstring_t *userName) noexcept override
    {
        Tell("PrepareChangePassword");
        if (!m_user)
            return kro::kProhibited;
        domain->Assign(m_user->domain);
        userName->Assign(m_user->name);
        return kro::kOk;
    }

    kro::result_t ChangePassword(const kro::wstring_t &newPassword) noexcept override
    {
        Tell("ChangePassword");
        if (!m_user)
            return kro::kProhibited;
        m_user->password.Wipe();
        m_user->password = newPassword;
        return m_loginView->ShowLoggedIn();
    }

    kro::result_t CancelChangePassword() noexcept override
    {
        Tell("CancelChangePassword");
        return m_loginView->ShowLoggedIn();
    }

    bool HasStarted() const { return m_started; }

private:
    User m_users[2] = {{u"", u"anna", u"green quill 7"}, {u"OFFICE", u"boris", u"paper-boat 42"}};
    User *m_user = nullptr;
    pba::IMainView *m_view = nullptr;
    pba::ILoginByPasswordView *m_loginView = nullptr;
    bool m_autologonTried = false;
    bool m_started = false;
};

int Refuse(const char *what)
{
    std::fprintf(stderr, "example_host: %s\n", what);
    return 1;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2)
        return Refuse("give it the directory that holds pba/");
    // Before the module is loaded. It stays loaded: its toolkit does not survive being unloaded.
    PbeSetFileRoot(argv[1]);
    void *module = dlopen(VIEW_MODULE, RTLD_NOW | RTLD_LOCAL);
    if (!module)
        return Refuse(dlerror());
    const auto create = reinterpret_cast<decltype(&CreateMainView)>(dlsym(module, "CreateMainView"));
    const auto remove = reinterpret_cast<decltype(&DeleteMainView)>(dlsym(module, "DeleteMainView"));
    if (!create || !remove)
        return Refuse(VIEW_MODULE " is no view module");
    kro::string_t missing;
    if (kro::Failed(PbeCheckDisplay(&missing)))
        return Refuse(missing.Data());

    ExampleHost host;
    pba::IMainView *view = create();
    if (!view)
        return Refuse("not enough memory");
    view->SetBusinessLogic(&host);
    const kro::result_t result = view->Run();
    remove(view);
    std::printf("Run: 0x%08x, %s\n", static_cast<unsigned>(result),
                host.HasStarted() ? "the system starts" : "nobody has logged on");
    return host.HasStarted() ? 0 : 1;
}
