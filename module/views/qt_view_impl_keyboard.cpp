// SPDX-License-Identifier: Apache-2.0
// Keyboard language and layout: the selectors, which are filled from the settings, and the text direction.
#include "module/views/qt_view_impl.h"

#include <QKeyEvent>

#include "pbe/screen.h"
#include "module/forms/ui_pba_main_window.h"
#include "module/views/right_to_left.h"

namespace pba {

namespace {

// The first one follows the last.
int NextIndex(const PbaComboBox &selector)
{
    const int next = selector.CurrentIndex() + 1;
    return next < selector.Count() ? next : 0;
}

// The toolkit's own key turns the text in the field, not the field itself. Nobody has pressed it, so it goes
// straight to the field, past all who watch what is pressed.
void SetDirection(QLineEdit *edit, bool rightToLeft)
{
    edit->setLayoutDirection(rightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    QKeyEvent press(QEvent::KeyPress, rightToLeft ? Qt::Key_Direction_R : Qt::Key_Direction_L, Qt::NoModifier,
                    QString(), false, 1);
    edit->event(&press);
}

} // namespace

void QtViewImpl::ConnectKeyboardSelectors()
{
    connect(Form().languageSelector, &PbaComboBox::CurrentIndexChanged, this,
            &QtViewImpl::OnSetKeyboardLanguage);
    connect(Form().layoutSelector, &PbaComboBox::CurrentIndexChanged, this, &QtViewImpl::OnSetKeyboardLayout);
}

const InputLanguage &QtViewImpl::Language(int index)
{
    return m_settings->GetPrebootSettings().inputLanguages[static_cast<std::size_t>(index)];
}

void QtViewImpl::InitKeyboardSelectors()
{
    const TraceScope trace("pba::QtViewImpl::InitKeyboardSelectors");
    const auto &languages = m_settings->GetPrebootSettings().inputLanguages;
    m_chosenLayouts.assign(languages.size(), 0);
    for (const InputLanguage &language : languages)
        Form().languageSelector->AddItem(QString::fromStdU16String(language.name));
    Form().languageSelector->SetCurrentIndex(0);
    UseLanguage(0);
}

void QtViewImpl::UseLanguage(int index)
{
    FillLayouts(index);
    SetTextDirection(IsRightToLeft(Language(index).languageId));
}

void QtViewImpl::UseLayout(int index)
{
    m_chosenLayouts[static_cast<std::size_t>(Form().languageSelector->CurrentIndex())] = index;
    SetKeyboardLayoutByIndex(index);
}

void QtViewImpl::FillLayouts(int languageIndex)
{
    Form().layoutSelector->Clear();
    m_layoutIds.clear();
    for (const KeyboardLayout &layout : Language(languageIndex).layouts) {
        Form().layoutSelector->AddItem(QString::fromStdU16String(layout.name));
        m_layoutIds.push_back(layout.layoutId);
    }
    const int chosen = m_chosenLayouts[static_cast<std::size_t>(languageIndex)];
    Form().layoutSelector->SetCurrentIndex(chosen);
    SetKeyboardLayoutByIndex(chosen);
}

void QtViewImpl::SetKeyboardLayoutByIndex(int layoutIndex)
{
    const std::uint32_t id = m_layoutIds[static_cast<std::size_t>(layoutIndex)];
    TraceMessage(kTraceInfo) << "Keyboard layout index: " << layoutIndex << ", id: " << id;
    QPbeScreen::Current()->SetKeyboardLayout(QString::number(id, 16).rightJustified(8, u'0'));
}

void QtViewImpl::SetTextDirection(bool rightToLeft)
{
    m_rightToLeft = rightToLeft;
    const auto edits = findChildren<QLineEdit *>();
    for (QLineEdit *edit : edits)
        SetDirection(edit, rightToLeft);
}

// Also those that come later: tokens' fields, lines of a response.
void QtViewImpl::DirectField(QObject *object)
{
    auto *edit = qobject_cast<QLineEdit *>(object);
    if (edit && isAncestorOf(edit))
        SetDirection(edit, m_rightToLeft);
}

void QtViewImpl::OnSetKeyboardLanguage(int langIndex)
{
    const TraceScope trace("pba::QtViewImpl::OnSetKeyboardLanguage");
    UseLanguage(langIndex);
}

void QtViewImpl::OnSetKeyboardLayout(int layoutIndex)
{
    const TraceScope trace("pba::QtViewImpl::OnSetKeyboardLayout");
    UseLayout(layoutIndex);
}

void QtViewImpl::OnNextKeyboardLanguage()
{
    const TraceScope trace("pba::QtViewImpl::OnNextKeyboardLanguage");
    const int next = NextIndex(*Form().languageSelector);
    TraceMessage(kTraceDetail) << "Language index: " << next;
    Form().languageSelector->SetCurrentIndex(next);
    UseLanguage(next);
}

void QtViewImpl::OnNextKeyboardLayout()
{
    const TraceScope trace("pba::QtViewImpl::OnNextKeyboardLayout");
    const int next = NextIndex(*Form().layoutSelector);
    TraceMessage(kTraceDetail) << "Layout index: " << next;
    Form().layoutSelector->SetCurrentIndex(next);
    UseLayout(next);
}

} // namespace pba
