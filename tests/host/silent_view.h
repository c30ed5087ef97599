// SPDX-License-Identifier: Apache-2.0
// A view that shows nothing and agrees to everything, after it has noted the call; needs the contract alone.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "pba/view.h"

using Calls = std::vector<std::string>;

class SilentView : public pba::IMainView, public pba::ILoginByPasswordView
{
public:
    pba::ILoginByPasswordLogic *logic = nullptr;
    std::u16string lastText; // of a message
    std::function<void()> duringMessage = [] {};

    // Since the last question; a message by its title.
    Calls TakeCalls() { return std::exchange(m_calls, {}); }

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
        const std::u16string_view latin = title.View();
        Note({latin.begin(), latin.end()});
        lastText = text.View();
        duringMessage();
        return kro::kOk;
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
    kro::result_t Note(const std::string &call)
    {
        m_calls.push_back(call);
        return kro::kOk;
    }

private:
    Calls m_calls;
};
