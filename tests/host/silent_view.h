// A view that shows nothing and agrees to everything, after it has noted the call; needs the contract alone.
#pragma once

#include <string>

#include "pba/view.h"

class SilentView : public pba::IMainView, public pba::ILoginByPasswordView
{
public:
    pba::ILoginByPasswordLogic *logic = nullptr;
    std::u16string lastText; // of a message

    void SetBusinessLogic(pba::IBusinessLogic *) override {}
    kro::result_t Run() override { return kro::kOk; }
    kro::result_t SetOptions(std::uint32_t) override { return kro::kOk; }
    kro::result_t ShowInitialScreen() override { return Note("InitialScreen"); }
    pba::ILoginByPasswordView *GetLoginByPasswordView() override { return this; }
    void Idle() override {}
    kro::result_t ShowTestBootMessage() override { return Note("TestBoot"); }
    kro::result_t ShowStartingOsScreen() override { return Note("StartingOs"); }
    kro::result_t Close() override { return Note("Close"); }
    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &text, std::uint32_t,
                              std::uint32_t) override
    {
        lastText = text.View();
        return Note(title.View() == u"Wrong user name or password" ? "Wrong"
                    : title.View() == u"Too many failed attempts"  ? "Wait"
                                                                   : "Message");
    }
    pba::IMainView *GetMainView() override { return this; }
    void SetLogic(pba::ILoginByPasswordLogic *newLogic) override { logic = newLogic; }
    void SelectPassword() override { Note("SelectPassword"); }
    void SelectUserName() override { Note("SelectUserName"); }
    kro::result_t ShowChangePassword(const kro::wstring_t &, const kro::wstring_t &, bool hideCancel) override
    {
        return Note(hideCancel ? "MustChangePassword" : "ChangePassword");
    }
    kro::result_t ShowLoggedIn() override { return Note("LoggedIn"); }

protected:
    virtual kro::result_t Note(const char *) { return kro::kOk; }
};
