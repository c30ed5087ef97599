// SPDX-License-Identifier: Apache-2.0
// The hot keys of the keyboard. The application's event filter brings every key event, first of all as the
// window's, so that one that is consumed there has been seen once.
#include "module/views/qt_view_impl.h"

#include <QKeyEvent>

#include "module/forms/ui_pba_main_window.h"

namespace pba {

void QtViewImpl::ConvertHotkeys()
{
    const PrebootSettings &settings = m_settings->GetPrebootSettings();
    m_languageSwitchHotkey = ConvertHotkey(settings.languageSwitchHotkey);
    m_keyboardLayoutSwitchHotkey = ConvertHotkey(settings.keyboardLayoutSwitchHotkey);
    m_capsLockTurnOffHotkey = ConvertHotkey(settings.capsLockTurnOffHotkey);
}

void QtViewImpl::BuildLayoutHotkeys()
{
    m_layoutHotkeys.clear();
    int language = 0;
    for (const InputLanguage &inputLanguage : m_settings->GetPrebootSettings().inputLanguages) {
        int layout = 0;
        for (const KeyboardLayout &keyboardLayout : inputLanguage.layouts) {
            const ToolkitHotkey hotkey = ConvertHotkey(keyboardLayout.selectHotkey);
            if (hotkey.IsSet())
                m_layoutHotkeys.push_back({hotkey, language, layout});
            ++layout;
        }
        ++language;
    }
}

bool QtViewImpl::eventFilter(QObject *object, QEvent *event)
{
    // Comes once to each widget, before it is first shown.
    if (event->type() == QEvent::Polish)
        DirectField(object);
    if (event->type() == QEvent::KeyPress && HandleHotkeyPress(static_cast<const QKeyEvent &>(*event)))
        return true;
    if (event->type() == QEvent::KeyRelease && HandleHotkeyRelease(static_cast<const QKeyEvent &>(*event)))
        return true;
    return QDialogWithEntropyCollection::eventFilter(object, event);
}

bool QtViewImpl::HandleHotkeyPress(const QKeyEvent &event)
{
    const auto matches = [key = static_cast<std::uint32_t>(event.key()),
                          modifiers = event.modifiers().toInt()](const ToolkitHotkey &hotkey) {
        return MatchesHotkey(hotkey, key, modifiers);
    };
    // Another key that is pressed before the release takes the step back.
    m_nextLanguagePressed = matches(m_languageSwitchHotkey);
    m_nextLayoutPressed = !m_nextLanguagePressed && matches(m_keyboardLayoutSwitchHotkey);
    if (m_nextLanguagePressed || m_nextLayoutPressed)
        return true;
    for (const LayoutHotkey &target : m_layoutHotkeys) {
        if (matches(target.hotkey)) {
            SelectLayout(target);
            return true;
        }
    }
    return false;
}

bool QtViewImpl::HandleHotkeyRelease(const QKeyEvent &event)
{
    if (!m_nextLanguagePressed && !m_nextLayoutPressed)
        return false;
    // A key that is held down repeats itself in pairs of release and press.
    if (event.isAutoRepeat())
        return true;
    if (m_nextLanguagePressed)
        OnNextKeyboardLanguage();
    else
        OnNextKeyboardLayout();
    m_nextLanguagePressed = false;
    m_nextLayoutPressed = false;
    return true;
}

void QtViewImpl::SelectLayout(const LayoutHotkey &target)
{
    Form().languageSelector->SetCurrentIndex(target.language);
    OnSetKeyboardLanguage(target.language);
    Form().layoutSelector->SetCurrentIndex(target.layout);
    OnSetKeyboardLayout(target.layout);
}

} // namespace pba
