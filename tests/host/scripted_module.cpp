// A view module without a display, compiled against the contract alone: it does what the file "script" in the
// current directory says, one step a line, so that the whole program can be tested.
#include <csignal>
#include <fstream>
#include <string>

#include "pba/view.h"

namespace {

class ScriptedView final : public pba::IMainView, public pba::ILoginByPasswordView
{
public:
    void SetBusinessLogic(pba::IBusinessLogic *logic) override { m_host = logic; }
    kro::result_t SetOptions(std::uint32_t) override { return kro::kOk; }
    kro::result_t ShowInitialScreen() override { return kro::kOk; }
    pba::ILoginByPasswordView *GetLoginByPasswordView() override { return this; }
    void Idle() override {}
    kro::result_t ShowTestBootMessage() override { return kro::kOk; }
    kro::result_t ShowStartingOsScreen() override { return kro::kOk; }
    kro::result_t Close() override { return kro::kOk; }
    kro::result_t ShowMessage(const kro::wstring_t &, const kro::wstring_t &, std::uint32_t,
                              std::uint32_t) override
    {
        return kro::kOk;
    }
    pba::IMainView *GetMainView() override { return this; }
    void SetLogic(pba::ILoginByPasswordLogic *logic) override { m_login = logic; }
    void SelectPassword() override {}
    void SelectUserName() override {}
    kro::result_t ShowChangePassword(const kro::wstring_t &, const kro::wstring_t &, bool) override
    {
        return kro::kOk;
    }
    kro::result_t ShowLoggedIn() override { return kro::kOk; }

    kro::result_t Run() override
    {
        std::ifstream script("script");
        kro::result_t result = m_host->Init(this);
        for (std::string step; std::getline(script, step);) {
            if (step == "login")
                m_login->Login(u"OFFICE", u"boris", u"paper boat");
            else if (step == "start")
                m_host->StartOperatingSystem();
            else if (step == "wait")
                result = WaitForSignal();
            else if (step == "ignore signals")
                m_deaf = true;
            else if (step == "fail")
                result = kro::kUnspecifiedError;
        }
        return result;
    }

private:
    // The signal may come from the moment on at which the file appears, not before.
    kro::result_t WaitForSignal()
    {
        sigset_t all;
        sigset_t former;
        sigfillset(&all);
        sigprocmask(SIG_BLOCK, &all, &former);
        std::ofstream("waiting") << 'x';
        do {
            sigsuspend(&former);
            std::ofstream("signalled") << 'x';
        } while (m_deaf);
        sigprocmask(SIG_SETMASK, &former, nullptr);
        return kro::kUnspecifiedError;
    }

    pba::IBusinessLogic *m_host = nullptr;
    pba::ILoginByPasswordLogic *m_login = nullptr;
    bool m_deaf = false;
};

} // namespace

pba::IMainView *CreateMainView()
{
    return new ScriptedView;
}

void DeleteMainView(pba::IMainView *view)
{
    delete view;
}

pba::ITranslator *CreateTranslator()
{
    return nullptr;
}

void DeleteTranslator(pba::ITranslator *translator)
{
    delete translator;
}
