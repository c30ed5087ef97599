// SPDX-License-Identifier: Apache-2.0
// Everything that the person is told outside the screens: messages, confirmations, internal errors, and the
// warning that the log may hold private data.
#include "module/views/qt_view_impl.h"

#include <QApplication>

#include "pbe/log.h"
#include "module/trace/result_text.h"
#include "module/forms/ui_pba_main_window.h"
#include "module/views/host_string.h"
#include "module/views/screen_traits.h"
#include "module/widgets/lock_ui_dialog.h"
#include "module/widgets/pba_message_box.h"

namespace pba {

namespace {

constexpr std::uint32_t kVerboseLogging = 1000;
constexpr std::uint32_t kDebugLogging = 800;

constexpr int kCancelled = 2;

} // namespace

// Runs a dialog in front of the controller's. Not every window system gives the focus back afterwards, and
// the one that stood in front may have been another dialog: then everything else is blocked.
int QtViewImpl::RunModal(QDialog &dialog)
{
    const int result = dialog.exec();
    QWidget *beneath = QApplication::activeModalWidget();
    (beneath ? beneath : this)->activateWindow();
    // A button that led to the dialog would take the keys that are pressed at random.
    if (IsCollectingEntropy())
        Form().stackedWidget->currentWidget()->setFocus();
    return result;
}

void QtViewImpl::ShowMessage(const QString &title, const QString &message, std::uint32_t severity,
                             std::uint32_t type, bool showVersion)
{
    const TraceScope trace("pba::QtViewImpl::ShowMessage");
    TraceMessage(kTraceDetail) << "Title: " << TraceUtf8{title} << ", message: " << TraceUtf8{message}
                               << ", severity: " << severity << ", type: " << type
                               << ", showVersion: " << showVersion;
    PbaMessageBox box;
    box.SetTitle(title);
    box.SetText(message);
    box.SetSeverityIcon(static_cast<int>(severity));
    box.SetButton3Text(tr("CONTINUE"));
    if (showVersion)
        box.ShowVersion();
    if (type == kMessageOffersRecovery || type == kMessageStartsRecovery)
        box.SetButton1Text(tr("Forgot your password?"));
    RunModal(box);
    if (type == kMessageStartsRecovery)
        OnPasswordRecoveryInternalDeferred();
    else if (type == kMessageOffersRecovery && box.Result() == 1)
        OnPasswordRecoveryDeferred();
}

bool QtViewImpl::ShowConfirmationMessage(const QString &title, const QString &message,
                                         const QString &buttonText)
{
    TraceMessage(kTraceDetail) << "Title: " << TraceUtf8{title} << ", message: " << TraceUtf8{message}
                               << ", button text: " << TraceUtf8{buttonText};
    PbaMessageBox box;
    box.SetTitle(title);
    box.SetText(message);
    box.SetButton2Text(tr("CANCEL"));
    box.SetButton3Text(buttonText);
    RunModal(box);
    // Only the button says no; a box that is closed otherwise counts as a yes.
    return box.Result() != kCancelled;
}

bool QtViewImpl::Succeeded(kro::result_t result, TraceScope &trace, const char *member, int line)
{
    if (!kro::Failed(result)) {
        m_reportedFailures.erase(line);
        return true;
    }
    trace.SetResult(result);
    ReportInternalError(result, member, line);
    return false;
}

void QtViewImpl::ReportInternalError(kro::result_t result, const char *member, int line)
{
    const auto code = static_cast<std::uint32_t>(result);
    TraceMessage(kTraceError) << "Internal PBA error. Function: " << member << ", line: " << line
                              << ", res: " << TraceHex{code};
    const bool reportedBefore = !m_reportedFailures.insert(line).second;
    if (m_checkingTokens && reportedBefore)
        return;
    LockUiDialog report;
    report.SetTitle(tr("Internal Error"));
    report.SetText(tr("Internal PBA error.\n\nFunction: %1\nLine: %2\nres: %3(%4)")
                       .arg(QString::fromUtf8(member), QString::number(line),
                            QString::number(code, 16).rightJustified(8, u' '),
                            QString::fromUtf16(kro::GetResultCodeText(code))));
    // The wait is over for as long as the report stands.
    const bool waiting = QGuiApplication::overrideCursor() != nullptr;
    if (waiting)
        QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    RunModal(report);
    if (waiting)
        QGuiApplication::restoreOverrideCursor();
}

void QtViewImpl::UpdateDebugLoggingWarning(int screen)
{
    const std::uint32_t severity = PbeGetLogSeverity();
    const bool verbose = severity >= kVerboseLogging;
    const bool shown = verbose || (severity >= kDebugLogging && !TraitsOf(screen).passive);
    if (verbose)
        Form().warningLabel->setText(
            tr("WARNING!\nVerbose debug logging is enabled.\nYour private data can be "
               "saved to log file."));
    else if (shown)
        Form().warningLabel->setText(
            tr("WARNING!\nDebug logging is enabled.\nYour private data can be saved to log file."));
    Form().warningLabel->setVisible(shown);
}

} // namespace pba
