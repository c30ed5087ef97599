// The token pages, and the check whether tokens that came or went change the screen.
#include "views/qt_view_impl.h"

#include <QApplication>

#include "pbe/screen.h"
#include "views/report_lines.h"
#include "views/screen_traits.h"

namespace pba {

namespace {

// Lets the wait cursor be painted before the host looks at its tokens.
constexpr int kTokenCheckDelayMs = 1;

bool FollowsTokens(int screen)
{
    return screen == kScreenLoginByPassword || screen == kScreenNoTokens || screen == kScreenLoginByToken;
}

} // namespace

void QtViewImpl::ShowLoginByTokenScreen()
{
    static constexpr char kMember[] = "pba::QtViewImpl::ShowLoginByTokenScreen";
    TraceScope trace(kMember);
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->StartLoginByToken(m_tokenAdapter.get()) : kro::kNotInitialized;
    if (!Succeeded(result, trace, kMember, report_line::kShowLoginByToken))
        return;
    SetScreen(kScreenLoginByToken);
}

bool QtViewImpl::IsAnyTokenConnected()
{
    static constexpr char kMember[] = "pba::QtViewImpl::IsAnyTokenConnected";
    TraceScope trace(kMember);
    bool connected = false;
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->CheckTokensConnected(&connected) : kro::kNotInitialized;
    return Succeeded(result, trace, kMember, report_line::kIsAnyTokenConnected) && connected;
}

void QtViewImpl::OnUpdateConnectedTokens()
{
    const TraceScope trace("pba::QtViewImpl::OnUpdateConnectedTokens");
    // A message that has only just come up may not be the active window yet.
    const bool inFront = isActiveWindow() && !QApplication::activeModalWidget();
    if ((m_options & kOptionLoginByToken) == 0 || !FollowsTokens(CurrentScreen()) || !inFront)
        return;
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QPbeScreen::Current()->SetPointerVisible(true);
    QTimer::singleShot(kTokenCheckDelayMs, this, &QtViewImpl::OnUpdateConnectedTokensSlot);
}

void QtViewImpl::OnUpdateConnectedTokensSlot()
{
    static constexpr char kMember[] = "pba::QtViewImpl::OnUpdateConnectedTokensSlot";
    TraceScope trace(kMember);
    bool screenMustChange = false;
    const kro::result_t result =
        m_businessLogic ? m_businessLogic->UpdateConnectedTokens(&screenMustChange) : kro::kNotInitialized;
    QGuiApplication::restoreOverrideCursor();
    m_startupBusy = false;
    UpdatePointer();
    if (kro::Failed(result) && std::exchange(m_tokenFailureReported, true)) {
        trace.SetResult(result);
        return;
    }
    if (!Succeeded(result, trace, kMember, report_line::kOnUpdateConnectedTokens))
        return;
    m_tokenFailureReported = false;
    if (screenMustChange)
        ShowInitialScreenInternal();
}

} // namespace pba
