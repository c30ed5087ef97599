// SPDX-License-Identifier: Apache-2.0
// The main view that the host holds: it owns a run of the user interface and forwards the host's requests to
// the controller that exists meanwhile.
#pragma once

#include "pba/view.h"

namespace pba {

class QtViewImpl;

class QtMainView final : public IMainView
{
public:
    void SetBusinessLogic(IBusinessLogic *logic) override;
    kro::result_t Run() override;
    kro::result_t SetOptions(std::uint32_t options) override;
    kro::result_t ShowInitialScreen() override;
    ILoginByPasswordView *GetLoginByPasswordView() override;
    void Idle() override;
    kro::result_t ShowTestBootMessage() override;
    kro::result_t ShowStartingOsScreen() override;
    kro::result_t Close() override;

    // Until the run ends, the controller and the host's calls go back to this object.
    bool IsRunning() const { return m_running; }

private:
    class Running;

    kro::result_t RunController();
    kro::result_t Forward(kro::result_t (QtViewImpl::*request)());

    // Not null only while the event loop runs.
    QtViewImpl *m_controller = nullptr;
    IBusinessLogic *m_businessLogic = nullptr;
    std::uint32_t m_options = 0;
    bool m_running = false;
};

} // namespace pba
