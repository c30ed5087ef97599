// SPDX-License-Identifier: Apache-2.0
#include "module/views/qt_view_impl.h"

#include <boost/program_options/variables_map.hpp>

#include <QKeyEvent>
#include <QSignalBlocker>

#include "module/forms/style.h"
#include "pbe/events.h"
#include "pbe/mouse_notifier.h"
#include "pbe/screen.h"
#include "module/settings/arguments_file.h"
#include "module/settings/paths.h"
#include "module/settings/pba_file.h"
#include "module/forms/ui_pba_main_window.h"
#include "module/views/screen_traits.h"
#include "module/widgets/secret_field.h"

namespace pba {

namespace {

// Posted by the dialog to itself when it is first shown.
constexpr QEvent::Type kUiShown = static_cast<QEvent::Type>(1000);
// Frameless, of fixed size: the dialog is the whole display.
constexpr Qt::WindowFlags kWindowFlags(0x900);
constexpr int kNewPasswordLimit = 127;

} // namespace

QtViewImpl::QtViewImpl(IMainView *owner)
    : m_form(new Ui::PbaMainWindow)
    , m_owner(owner)
    , m_passwordAdapter(new QtLoginByPasswordView(*this))
    , m_recoveryAdapter(new QtPasswordRecoveryView(*this))
    , m_tokenAdapter(new QtLoginByTokenView(*this))
    , m_testBootTimer(new QTimer(this))
    , m_savedTimer(new QTimer(this))
    , m_settings(new Settings)
{
    // Before there are children: flags set later make each of them look up its style anew.
    setWindowFlags(kWindowFlags);
    Form().setupUi(this);
    const auto fields = findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        WatchSecretField(field);
    ApplyPbaStyle(this);
    for (QWidget *widget :
         std::initializer_list<QWidget *>{Form().loginDomain, Form().fpsButton, Form().accelerationFactor,
                                          Form().pixelsPerMillimeter, Form().accelerationThreshold})
        widget->hide();
    m_testBootTimer->setSingleShot(true);
    m_testBootTimer->setTimerType(Qt::PreciseTimer);
    m_savedTimer->setSingleShot(true);
    Form().newPassword->setMaxLength(kNewPasswordLimit);
    Form().confirmNewPassword->setMaxLength(kNewPasswordLimit);
    SetScreen(kScreenStarting);
    ConnectLoginPage();
    ConnectTokenPage();
    ConnectPasswordChangePage();
    ConnectKeyboardSelectors();
    ConnectRecoveryEntries();
    ConnectRecoveryPages();
    ConnectBootPages();
    connect(Form().helpButton, &QPushButton::clicked, this, &QtViewImpl::OnShowHelp);
    TraceMessage(kTraceDetail) << "Mouse count: " << QPbeMouseNotifier::GetMousecount();
    UpdatePointer();
    ReadPbaArgs();
}

QtViewImpl::~QtViewImpl()
{
    const auto fields = findChildren<QLineEdit *>();
    for (QLineEdit *field : fields) {
        const QSignalBlocker quiet(field);
        EmptySecretField(field);
    }
}

void QtViewImpl::ReadPbaArgs()
{
    const QString path = QString::fromUtf16(kArgumentsPath);
    if (!PbaFileExists(path)) {
        TraceMessage(kTraceDetail) << "PBA arguments file \"" << path << "\" does not exist.";
        return;
    }
    boost::program_options::variables_map arguments;
    if (kro::Failed(fde::boot::ReadPbaArguments(kArgumentsPath, arguments)))
        return;
    m_testMode = arguments.count("test-mode") != 0 && arguments["test-mode"].as<bool>();
}

Ui::PbaMainWindow &QtViewImpl::Form() const
{
    Q_ASSERT(m_form);
    return *m_form;
}

void QtViewImpl::SetBusinessLogic(IBusinessLogic *logic)
{
    m_businessLogic = logic;
}

void QtViewImpl::SetOptions(std::uint32_t options)
{
    m_options = options;
}

void QtViewImpl::SetLogic(ILoginByPasswordLogic *logic)
{
    m_passwordLogic = logic;
}

void QtViewImpl::SetLogic(IPasswordRecoveryLogic *logic)
{
    m_recoveryLogic = logic;
    Form().responseInput->SetChecker(logic);
}

void QtViewImpl::SetLogic(ILoginByTokenLogic *logic)
{
    m_tokenLogic = logic;
}

IMainView *QtViewImpl::GetMainView() const
{
    return m_owner;
}

ILoginByPasswordView *QtViewImpl::GetLoginByPasswordView()
{
    return m_passwordAdapter.get();
}

bool QtViewImpl::event(QEvent *event)
{
    if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
        TraceKey(static_cast<const QKeyEvent &>(*event));
    if (StartsOsDuringTestBoot(*event)) {
        OnStartOsDuringTestBoot();
        event->accept();
        return true;
    }
    switch (static_cast<int>(event->type())) {
    case kUiShown:
        HandleUiShown();
        return true;
    case pbe::kTokenAdded:
    case pbe::kTokenRemoved:
        TraceMessage(kTraceDetail)
            << "received PbeTokenAdded or PbeTokenRemoved event, updating token list...";
        m_reportedFailures.clear();
        OnUpdateConnectedTokens();
        return true;
    case pbe::kMouseAdded:
    case pbe::kMouseRemoved:
        TraceMessage(kTraceDetail)
            << "Received PbeMouseAdded or PbeMouseRemoved event. Update cursor visibility.";
        UpdatePointer();
        return true;
    default:
        HandleActivation();
        return QDialogWithEntropyCollection::event(event);
    }
}

bool QtViewImpl::StartsOsDuringTestBoot(const QEvent &event) const
{
    return m_testBootActive && (event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride);
}

// Those of a password reset are nobody's business: they become entropy, or are part of a response. Nor is the
// release of a key that was pressed elsewhere, in a field that hid its press or on a page that is gone.
void QtViewImpl::TraceKey(const QKeyEvent &event)
{
    const int page = CurrentScreen();
    if (TraitsOf(page).recovery)
        return;
    if (event.type() == QEvent::KeyPress)
        m_loggedKeys[event.key()] = page;
    else if (m_loggedKeys.value(event.key(), -1) != page)
        return;
    if (event.type() == QEvent::KeyRelease && !event.isAutoRepeat())
        m_loggedKeys.remove(event.key());
    TraceMessage(kTraceDetail) << "key:" << event.key() << ", modifiers:" << event.modifiers().toInt()
                               << ", isAutoRepeat:" << event.isAutoRepeat() << ", count:" << event.count();
}

// Tokens may have changed while a message stood in front of the dialog.
void QtViewImpl::HandleActivation()
{
    const bool active = isActiveWindow();
    if (active == m_wasActiveWindow)
        return;
    m_wasActiveWindow = active;
    if (active)
        OnUpdateConnectedTokens();
}

// While the start-up is busy the wait cursor must be seen, whether or not there is a mouse.
void QtViewImpl::UpdatePointer()
{
    QPbeScreen::Current()->SetPointerVisible(m_startupBusy || QPbeMouseNotifier::GetMousecount() >= 1);
}

void QtViewImpl::showEvent(QShowEvent *event)
{
    QDialogWithEntropyCollection::showEvent(event);
    if (!event->spontaneous())
        QCoreApplication::postEvent(this, new QEvent(kUiShown));
}

void QtViewImpl::reject()
{
    if (!m_closeForbidden)
        QDialogWithEntropyCollection::reject();
}

kro::result_t QtViewImpl::OnClose()
{
    return Defer("pba::QtViewImpl::OnClose", [this] { OnCloseInternal(); });
}

void QtViewImpl::OnCloseInternal()
{
    const TraceScope trace("pba::QtViewImpl::OnCloseInternal");
    QPbeScreen::Current()->TurnOffScreenRepaint();
    m_closeForbidden = false;
    close();
    // A message that stands in front would keep the event loop alive.
    QCoreApplication::exit(0);
}

} // namespace pba
