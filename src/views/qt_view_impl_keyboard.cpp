// The selectors of keyboard language and layout, filled from the settings.
#include "views/qt_view_impl.h"

#include "ui_pba_main_window.h"

namespace pba {

void QtViewImpl::InitKeyboardSelectors()
{
    for (const InputLanguage &language : m_settings->GetPrebootSettings().inputLanguages)
        Form().languageSelector->AddItem(QString::fromStdU16String(language.name));
    Form().languageSelector->SetCurrentIndex(0);
    FillLayouts(0);
}

void QtViewImpl::FillLayouts(int languageIndex)
{
    Form().layoutSelector->Clear();
    const auto &languages = m_settings->GetPrebootSettings().inputLanguages;
    for (const KeyboardLayout &layout : languages[static_cast<std::size_t>(languageIndex)].layouts)
        Form().layoutSelector->AddItem(QString::fromStdU16String(layout.name));
    Form().layoutSelector->SetCurrentIndex(0);
}

} // namespace pba
