// SPDX-License-Identifier: Apache-2.0
// A view module without a display, compiled against the contract alone: it does what the file pba/script
// below the current directory says, one step a line, so that the whole program can be tested. It may signal
// nobody; for that it asks whoever reads its errors, and goes on when there is something in pba/go.
#include <fstream>
#include <iostream>
#include <string>

#include "tests/host/silent_view.h"

namespace {

class ScriptedView final : public SilentView
{
public:
    void SetBusinessLogic(pba::IBusinessLogic *host) override { m_host = host; }

    kro::result_t Run() override
    {
        std::ifstream script("pba/script");
        kro::result_t result = m_host->Init(this);
        for (std::string step; std::getline(script, step);) {
            if (step == "login" || (step == "automatic" && !IsAutologonSuppressed()))
                logic->Login(u"OFFICE", u"boris", u"paper boat");
            else if (step == "wrong")
                logic->Login(u"OFFICE", u"boris", u"no");
            else if (step == "start")
                m_host->StartOperatingSystem();
            else if (step == "signal")
                AskForSignal();
            else if (step == "fail")
                result = kro::kUnspecifiedError;
        }
        return result;
    }

private:
    static void AskForSignal()
    {
        std::cerr << "signal\n"; // in one piece
        std::ifstream("pba/go").get();
    }
    bool IsAutologonSuppressed()
    {
        bool suppressed = false;
        return logic->IsAutologonSuppressed(&suppressed) != kro::kOk || suppressed;
    }

    pba::IBusinessLogic *m_host = nullptr;
};

} // namespace

pba::IMainView *CreateMainView()
{
    static ScriptedView view;
    return &view;
}

void DeleteMainView(pba::IMainView *) {}

pba::ITranslator *CreateTranslator()
{
    return nullptr;
}

void DeleteTranslator(pba::ITranslator *) {}
