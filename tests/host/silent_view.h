// A view that shows nothing and agrees to everything; needs the contract alone.
#pragma once

#include "pba/view.h"

class SilentView : public pba::IMainView, public pba::ILoginByPasswordView
{
public:
    pba::ILoginByPasswordLogic *logic = nullptr;

    void SetBusinessLogic(pba::IBusinessLogic *) override {}
    kro::result_t Run() override { return kro::kOk; }
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
    void SetLogic(pba::ILoginByPasswordLogic *newLogic) override { logic = newLogic; }
    void SelectPassword() override {}
    void SelectUserName() override {}
    kro::result_t ShowChangePassword(const kro::wstring_t &, const kro::wstring_t &, bool) override
    {
        return kro::kOk;
    }
    kro::result_t ShowLoggedIn() override { return kro::kOk; }
};
