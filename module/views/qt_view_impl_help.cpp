// SPDX-License-Identifier: Apache-2.0
// Help: a text for each page, from files that may be replaced without rebuilding the module.
#include "module/views/qt_view_impl.h"

#include "module/settings/text_file.h"
#include "module/views/screen_traits.h"

namespace pba {

void QtViewImpl::OnShowHelp()
{
    const TraceScope trace("pba::QtViewImpl::OnShowHelp");
    const char16_t *helpFile = TraitsOf(CurrentScreen()).helpFile;
    if (!helpFile) {
        ShowMessage(tr("No help for this screen"), tr("This screen does not have a special help message."),
                    kSeverityInformation, kMessagePlain, true);
        return;
    }
    const QString path = QString::fromUtf16(helpFile);
    QString text;
    if (ReadTextFromFile(path, &text))
        ShowMessage(tr("Preboot authentication help"), text, kSeverityInformation, kMessagePlain, true);
    else
        ShowMessage(
            u"Error reading help from disk"_qs,
            u"Authentication agent internal error. Cannot read help file \"%1\"."_qs.arg(path, 0, u' '),
            kSeverityError, kMessagePlain, false);
}

} // namespace pba
