// SPDX-License-Identifier: Apache-2.0
// From the first showing to the host's Init. The hops let the starting page paint before the slow work.
#include "module/views/qt_view_impl.h"

#include <QApplication>

#include "pbe/screen.h"
#include "module/forms/ui_pba_main_window.h"

namespace pba {

namespace {

constexpr int kHopMs = 1;

} // namespace

void QtViewImpl::HandleUiShown()
{
    TraceMessage(kTraceDetail) << "UiShownEventType";
    ClearDefaultButtons();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    m_startupBusy = true;
    UpdatePointer();
    QPbeScreen::Current()->TurnOnScreenRepaint();
    QTimer::singleShot(kHopMs, this, &QtViewImpl::DoLongStartupOperations);
}

void QtViewImpl::DoLongStartupOperations()
{
    const TraceScope trace("pba::QtViewImpl::DoLongStartupOperations");
    Form().labelHostNameValue->setText(QString::fromStdU16String(m_settings->GetHostName()));
    InitKeyboardSelectors();
    ConvertHotkeys();
    BuildLayoutHotkeys();
    QTimer::singleShot(kHopMs, this, &QtViewImpl::InitBusinessLogic);
}

void QtViewImpl::InitBusinessLogic()
{
    static constexpr char kMember[] = "pba::QtViewImpl::InitBusinessLogic";
    TraceScope trace(kMember);
    CallResult result = kro::kNotInitialized;
    if (m_businessLogic)
        result = m_businessLogic->Init(m_owner);
    if (!Succeeded(result, trace, kMember))
        return;
    CallDeferredStateChange();
    QGuiApplication::restoreOverrideCursor();
    m_startupBusy = false;
    UpdatePointer();
}

} // namespace pba
