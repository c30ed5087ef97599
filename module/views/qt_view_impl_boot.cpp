// SPDX-License-Identifier: Apache-2.0
// The test boot, the keyboard test, and the start of the operating system.
#include "module/views/qt_view_impl.h"

#include "module/forms/ui_pba_main_window.h"
#include "module/views/screen_traits.h"

namespace pba {

namespace {

constexpr int kTestBootTimeoutMs = 20000;

} // namespace

void QtViewImpl::ConnectBootPages()
{
    connect(Form().testBootButton, &QPushButton::clicked, this, &QtViewImpl::OnStartOsDuringTestBoot);
    connect(Form().startWindowsButton, &QPushButton::clicked, this, &QtViewImpl::OnStartOsDuringTestBoot);
    connect(m_testBootTimer, &QTimer::timeout, this, &QtViewImpl::OnStartOsDuringTestBoot);
}

kro::result_t QtViewImpl::ShowTestBootMessage()
{
    return Defer("pba::QtViewImpl::ShowTestBootMessage", [this] { ShowTestBootMessageInternal(); });
}

void QtViewImpl::ShowTestBootMessageInternal()
{
    const TraceScope trace("pba::QtViewImpl::ShowTestBootMessageInternal");
    if (m_testMode) {
        SetScreen(kScreenKeyboardTest);
        return;
    }
    m_testBootActive = true;
    m_testBootTimer->start(kTestBootTimeoutMs);
    SetScreen(kScreenTestBoot);
}

void QtViewImpl::OnStartOsDuringTestBoot()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnStartOsDuringTestBoot";
    TraceScope trace(kMember);
    // A second click, or a timer or key that comes too late.
    if (!m_testBootActive && !m_testMode)
        return;
    m_testBootActive = false;
    m_testMode = false;
    m_testBootTimer->stop();
    CallResult result = kro::kNotInitialized;
    if (m_businessLogic)
        result = m_businessLogic->StartOperatingSystem();
    if (Succeeded(result, trace, kMember))
        CallDeferredStateChange();
}

kro::result_t QtViewImpl::ShowStartingOsScreen()
{
    const TraceScope trace("pba::QtViewImpl::ShowStartingOsScreen");
    SetScreen(kScreenStartingWindows);
    return kro::kOk;
}

} // namespace pba
