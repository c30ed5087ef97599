// SPDX-License-Identifier: Apache-2.0
// The controller: the one dialog of the user interface. It owns the form, shows one page of it at a time,
// turns what the person does into calls to the host and what the host asks for into screens.
//
// This header is the table of contents; each subject has a file of its own:
//   qt_view_impl.cpp                    construction, connections, events, closing
//   qt_view_impl_screens.cpp            SetScreen, the first screen, deferred state changes
//   qt_view_impl_startup.cpp            from the first showing to the host's Init
//   qt_view_impl_messages.cpp           messages, confirmations, internal errors, the logging warning
//   qt_view_impl_login_by_password.cpp  the login page, automatic logon
//   qt_view_impl_login_by_token.cpp     the token pages, tokens that come and go
//   qt_view_impl_password_change.cpp    what follows a login, the password-change page
//   qt_view_impl_keyboard.cpp           keyboard language and layout: selectors, text direction
//   qt_view_impl_hotkeys.cpp            the hot keys that change them
//   qt_view_impl_recovery.cpp           the way through the password reset: its start, confirmations, outcome
//   qt_view_impl_recovery_pages.cpp     its three steps: entropy, challenge, response
//   qt_view_impl_boot.cpp               test boot, keyboard test, the start of the operating system
//   qt_view_impl_help.cpp               help
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <vector>

#include <QHash>
#include <QTimer>
#include <boost/scoped_ptr.hpp>

#include "pba/view.h"
#include "module/settings/settings.h"
#include "module/trace/trace.h"
#include "module/views/entropy_buffer.h"
#include "module/views/entropy_dialog.h"
#include "module/views/hotkeys.h"
#include "module/views/report_lines.h"
#include "module/views/view_adapters.h"

namespace Ui {
class PbaMainWindow;
}
class QKeyEvent;

namespace pba {

class QtViewImpl final : public QDialogWithEntropyCollection
{
    Q_OBJECT

public:
    explicit QtViewImpl(IMainView *owner);
    ~QtViewImpl() override;

    // What the host hands over. Nothing of it is owned.
    void SetBusinessLogic(IBusinessLogic *logic);
    void SetOptions(std::uint32_t options);
    void SetLogic(ILoginByPasswordLogic *logic);
    void SetLogic(IPasswordRecoveryLogic *logic);
    void SetLogic(ILoginByTokenLogic *logic);
    IMainView *GetMainView() const;
    ILoginByPasswordView *GetLoginByPasswordView();

    // Carried out at once.
    void ShowMessage(const QString &title, const QString &message, std::uint32_t severity, std::uint32_t type,
                     bool showVersion);
    kro::result_t ShowStartingOsScreen();
    void SelectPassword();
    void SelectUserName();

    // Requests: each replaces the one that is pending, and is run by CallDeferredStateChange.
    kro::result_t ShowInitialScreen();
    kro::result_t ShowTestBootMessage();
    kro::result_t OnClose();
    kro::result_t ShowChangePassword(const QString &title, const QString &message, bool hideCancel);
    kro::result_t ShowLoggedIn();
    kro::result_t OnPasswordRecoveryDeferred();
    kro::result_t OnPasswordRecoveryInternalDeferred();
    kro::result_t StartEntropyCollection(std::uint32_t amount);
    kro::result_t ShowChallenge(const kro::vector_t<kro::string_t> &challenge);
    kro::result_t StartResponceInput();

public slots:
    void OnLogin();
    void OnPasswordRecovery();
    void OnChangePassword();
    void OnSavePassword();
    void OnCancelChangePassword();
    void OnSetKeyboardLanguage(int langIndex);
    void OnSetKeyboardLayout(int layoutIndex);
    void OnNextKeyboardLanguage();
    void OnNextKeyboardLayout();
    void OnGotoResponse();
    void OnResponceLineRejected();
    void OnResponceLineAccepted();
    void OnResponseLineEdited();
    void OnResponceRejected();
    void OnResponceAccepted();
    void OnGotoChangePasswordAfterRecovery();
    void OnQuitPasswordRecovery();
    void OnRestartPasswordRecovery();
    void OnStartOsDuringTestBoot();
    void OnLoginOrPasswordTextChanged();
    void OnChangeDomain();
    void OnShowHelp();
    void OnTokenPinEntered(int index, const QString &pin);
    void OnUpdateConnectedTokens();
    void TryToAutologon();
    void CallDeferredStateChange();
    void OnUpdateConnectedTokensSlot();
    void DoLongStartupOperations();
    void InitBusinessLogic();

public:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    void AddEntropy(std::uint8_t byte) override;

private:
    using StateChange = std::function<void()>;

    // Construction
    void ConnectLoginPage();
    void ConnectTokenPage();
    void ConnectPasswordChangePage();
    void ConnectKeyboardSelectors();
    void ConnectRecoveryEntries();
    void ConnectRecoveryPages();
    void ConnectBootPages();
    void ReadPbaArgs();

    // Screens
    Ui::PbaMainWindow &Form() const;
    int CurrentScreen() const;
    void SetScreen(int index);
    void ClearDefaultButtons();
    bool IsRecoveryInProgress();
    void SetUpScreen(int index);
    kro::result_t Defer(const char *name, StateChange change);
    void ShowInitialScreenInternal();
    void OnCloseInternal();

    // Events
    void HandleUiShown();
    void HandleActivation();
    void UpdatePointer();
    bool StartsOsDuringTestBoot(const QEvent &event) const;
    void TraceKey(const QKeyEvent &event);

    // Messages
    int RunModal(QDialog &dialog);
    bool ShowConfirmationMessage(const QString &title, const QString &message, const QString &buttonText);
    void ReportInternalError(kro::result_t result, const char *member, int line);
    // Whether the host's call succeeded; reports it when not, and notes the code for the member's END line.
    bool Succeeded(kro::result_t result, TraceScope &trace, const char *member, int line);
    bool Succeeded(const CallResult &result, TraceScope &trace, const char *member)
    {
        return Succeeded(result.code, trace, member, result.line);
    }
    void UpdateDebugLoggingWarning(int screen);

    // Login by password
    void ShowLoginByPasswordScreen();
    void SetUpLoginPage();
    void ShowDomainInputField();
    void HideDomainInputField();
    bool CheckLoginFields();
    bool ReadAutologonFile(QString *userName, QString *password) const;

    // Login by token
    void ShowLoginByTokenScreen();
    // Answers how many tokens are listed; 0 when the host's refusal was reported.
    int UpdateTokenList();
    bool IsAnyTokenConnected();

    // Password change
    void ShowLoggedInInternal();
    void StartOperatingSystemAfterLogin(TraceScope &trace);
    void OfferPasswordChange(TraceScope &trace);
    // False when the host's refusal was reported.
    bool ShowChangePasswordInternal(const QString &title, const QString &message, bool hideCancel);

    // Keyboard
    void InitKeyboardSelectors();
    void UseLanguage(int index);
    void UseLayout(int index);
    void FillLayouts(int languageIndex);
    void SetKeyboardLayoutByIndex(int layoutIndex);
    void SetTextDirection(bool rightToLeft);
    void DirectField(QObject *object);
    const InputLanguage &Language(int index);

    // Hot keys
    void ConvertHotkeys();
    void BuildLayoutHotkeys();
    // Whether the event was a hot key's.
    bool HandleHotkeyPress(const QKeyEvent &event);
    bool HandleHotkeyRelease(const QKeyEvent &event);
    void SelectLayout(const LayoutHotkey &target);

    // Recovery
    void OnPasswordRecoveryInternal();
    void StartEntropyCollectionInternal(std::uint32_t amount);
    void EntropyCollected();
    void ShowChallengeInternal(const kro::vector_t<kro::string_t> &challenge);
    void StartResponceInputInternal();
    void ShowResponseOutcome(const QString &text, void (QtViewImpl::*next)());

    // Boot
    void ShowTestBootMessageInternal();

    boost::scoped_ptr<Ui::PbaMainWindow> m_form;
    IMainView *m_owner;
    bool m_closeForbidden = true;

    boost::scoped_ptr<QtLoginByPasswordView> m_passwordAdapter;
    boost::scoped_ptr<QtPasswordRecoveryView> m_recoveryAdapter;
    boost::scoped_ptr<QtLoginByTokenView> m_tokenAdapter;
    IBusinessLogic *m_businessLogic = nullptr;
    ILoginByPasswordLogic *m_passwordLogic = nullptr;
    IPasswordRecoveryLogic *m_recoveryLogic = nullptr;
    ILoginByTokenLogic *m_tokenLogic = nullptr;

    // Null before the first collection.
    std::shared_ptr<EntropyBuffer> m_entropy;
    StateChange m_pendingStateChange;
    int m_stateChangeDepth = 0;
    bool m_testBootActive = false;
    std::uint32_t m_options = 0;
    bool m_wasActiveWindow = false;
    // The keys whose press was logged, and the page on which it was.
    QHash<int, int> m_loggedKeys;
    // A token check is made whenever the window becomes active, and its own report is what makes it active
    // again. So it reports no failure that was reported before, until that call succeeds or a token comes or
    // goes. By the calls' lines.
    std::set<int> m_reportedFailures;
    bool m_checkingTokens = false;
    bool m_changePasswordAfterLogin = false;
    bool m_startupBusy = true;
    bool m_testMode = false;

    // The layout last chosen in each language, and the identifiers of the layouts that the selector offers.
    std::vector<int> m_chosenLayouts;
    std::vector<std::uint32_t> m_layoutIds;
    bool m_rightToLeft = false;
    ToolkitHotkey m_languageSwitchHotkey;
    ToolkitHotkey m_keyboardLayoutSwitchHotkey;
    // Kept with the others; pressing it is no business of the view.
    ToolkitHotkey m_capsLockTurnOffHotkey;
    std::vector<LayoutHotkey> m_layoutHotkeys;
    // Pressed: the step is made when the keys are released.
    bool m_nextLanguagePressed = false;
    bool m_nextLayoutPressed = false;

    // The last ones: a child of the dialog is announced to it by an event, for which the rest must be ready.
    QTimer *m_testBootTimer = nullptr;
    QTimer *m_savedTimer = nullptr;
    boost::scoped_ptr<Settings> m_settings;
};

} // namespace pba
