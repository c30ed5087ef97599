// plain_host MODULE: a host that knows the contract's headers and nothing else, neither the toolkit nor the
// platform. It calls the main view before, during and after a run.
#include <cstdio>

#include <dlfcn.h>

#include "pba/view.h"

namespace {

// Wants the view to end as soon as it has come up.
class PlainHost final : public pba::IBusinessLogic,
                        public pba::ILoginByPasswordLogic,
                        public pba::ILoginByTokenLogic,
                        public pba::IPasswordRecoveryLogic
{
public:
    bool hadView = false;

    kro::result_t Init(pba::IMainView *view) override
    {
        pba::ILoginByPasswordView *passwordView = view->GetLoginByPasswordView();
        hadView = passwordView && passwordView->GetMainView() == view && view->Run() == kro::kInvalidState;
        return view->Close();
    }
    kro::result_t UpdateConnectedTokens(bool *) override { return kro::kOk; }
    kro::result_t CheckTokensConnected(bool *) override { return kro::kOk; }
    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *) override { return kro::kOk; }
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *) override { return kro::kOk; }
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *) override { return kro::kOk; }
    kro::result_t StartOperatingSystem() override { return kro::kOk; }

    kro::result_t IsAutologonSuppressed(bool *) override { return kro::kOk; }
    kro::result_t Login(const kro::wstring_t &, const kro::wstring_t &, const kro::wstring_t &) override
    {
        return kro::kOk;
    }
    kro::result_t ConfirmLoggedIn() override { return kro::kOk; }
    kro::result_t GetPasswordChangeInfo(bool *, kro::wstring_t *, kro::wstring_t *) override
    {
        return kro::kOk;
    }
    kro::result_t PrepareChangePassword(kro::wstring_t *, kro::wstring_t *) override { return kro::kOk; }
    kro::result_t ChangePassword(const kro::wstring_t &) override { return kro::kOk; }
    kro::result_t CancelChangePassword() override { return kro::kOk; }

    kro::result_t Reserved() override { return kro::kOk; }
    kro::result_t GetTokens(kro::vector_t<pba::TokenRecord> *) override { return kro::kOk; }
    kro::result_t LoginByToken(std::int32_t, const kro::string_t &) override { return kro::kOk; }

    kro::result_t SetEntropy(const kro::vector_t<std::uint8_t> &) override { return kro::kOk; }
    kro::result_t CheckResponseLine(const kro::string_t &) override { return kro::kOk; }
    kro::result_t CheckResponse(const kro::vector_t<kro::string_t> &, bool *, bool *) override
    {
        return kro::kOk;
    }
    kro::result_t GotoChangePassword() override { return kro::kOk; }
    bool IsRecoveryInProgress() override { return false; }
    kro::result_t QuitRecovery() override { return kro::kOk; }
    kro::result_t RestartRecovery() override { return kro::kOk; }
};

template <typename Function>
Function Find(void *module, const char *name)
{
    return reinterpret_cast<Function>(dlsym(module, name));
}

int s_faults = 0;

void Expect(bool right, const char *what)
{
    if (right)
        return;
    std::fprintf(stderr, "%s\n", what);
    ++s_faults;
}

void ExpectNoRun(pba::IMainView *view)
{
    Expect(view->ShowInitialScreen() == kro::kInvalidState, "ShowInitialScreen outside a run");
    Expect(!view->GetLoginByPasswordView(), "GetLoginByPasswordView outside a run");
    Expect(view->ShowTestBootMessage() == kro::kInvalidState, "ShowTestBootMessage outside a run");
    Expect(view->ShowStartingOsScreen() == kro::kInvalidState, "ShowStartingOsScreen outside a run");
    Expect(view->Close() == kro::kInvalidState, "Close outside a run");
    view->Idle();
}

} // namespace

int main(int argc, char **argv)
{
    void *module = argc == 2 ? dlopen(argv[1], RTLD_NOW | RTLD_LOCAL) : nullptr;
    if (!module) {
        std::fprintf(stderr, "no module: %s\n", argc == 2 ? dlerror() : "name it");
        return 1;
    }
    const auto createMainView = Find<decltype(&CreateMainView)>(module, "CreateMainView");
    const auto deleteMainView = Find<decltype(&DeleteMainView)>(module, "DeleteMainView");
    const auto createTranslator = Find<decltype(&CreateTranslator)>(module, "CreateTranslator");
    const auto deleteTranslator = Find<decltype(&DeleteTranslator)>(module, "DeleteTranslator");

    PlainHost host;
    pba::IMainView *view = createMainView();
    view->SetBusinessLogic(&host);
    Expect(view->SetOptions(pba::kOptionLoginByPassword) == kro::kOk, "SetOptions");
    ExpectNoRun(view);
    Expect(view->Run() == kro::kOk && host.hadView, "Run");
    ExpectNoRun(view);
    deleteMainView(view);
    deleteMainView(nullptr);
    Expect(!createTranslator(), "a translator without a catalogue");
    deleteTranslator(nullptr);
    return s_faults;
}
