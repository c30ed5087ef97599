// SPDX-License-Identifier: Apache-2.0
#include "module/views/main_view.h"

#include <QApplication>
#include <QIcon>
#include <QScreen>

#include "module/settings/paths.h"
#include "module/trace/trace.h"
#include "module/views/catalogue.h"
#include "module/views/guarded.h"
#include "module/views/qt_view_impl.h"

namespace pba {

// Notes that a run is under way, until it ends, by an exception too.
class QtMainView::Running
{
public:
    explicit Running(QtMainView &view)
        : m_view(view)
    {
        m_view.m_running = true;
    }
    ~Running()
    {
        m_view.m_controller = nullptr;
        m_view.m_running = false;
    }
    Running(const Running &) = delete;
    Running &operator=(const Running &) = delete;

private:
    QtMainView &m_view;
};

void QtMainView::SetBusinessLogic(IBusinessLogic *logic)
{
    // Kept in both places: a later run must not meet a logic that the host has replaced.
    m_businessLogic = logic;
    if (m_controller)
        m_controller->SetBusinessLogic(logic);
}

kro::result_t QtMainView::Run()
{
    TraceScope trace("pba::QtMainView::Run");
    // There can be one: this view's own of a run under way, another view's, or the host's.
    const kro::result_t result = QCoreApplication::instance() ? kro::kInvalidState : RunController();
    trace.SetResult(result);
    return result;
}

kro::result_t QtMainView::RunController()
{
    const Running running(*this);
    // The look must not depend on what desktop the system has installed.
    QApplication::setDesktopSettingsAware(false);
    QApplication::setStyle(u"Fusion"_qs);
    int argumentCount = 1;
    char name[] = "app_name";
    char *arguments[] = {name, nullptr};
    QApplication application(argumentCount, arguments);
    // The toolkit goes on without a display to the first use of one.
    if (!QGuiApplication::primaryScreen())
        return kro::kUnspecifiedError;
    // The plugin of the window system is loaded and no other is needed: without this every image would have
    // all plugins for image formats looked for and loaded.
    QCoreApplication::setLibraryPaths({});

    Catalogue catalogue;
    if (catalogue.Load(kViewCataloguePath))
        QCoreApplication::installTranslator(&catalogue.Translator());
    QIcon icon;
    icon.addFile(u":/pba2/quillmark.png"_qs);
    QApplication::setWindowIcon(icon);

    QtViewImpl controller(this);
    m_controller = &controller;
    controller.SetOptions(m_options);
    controller.SetBusinessLogic(m_businessLogic);
    // Without a window manager nobody else would give the dialog the whole screen and the focus.
    controller.setGeometry(QGuiApplication::primaryScreen()->geometry());
    controller.showMaximized();
    controller.activateWindow();
    const int exitCode = QApplication::exec();
    m_controller = nullptr;
    return exitCode == 0 ? kro::kOk : kro::kUnspecifiedError;
}

kro::result_t QtMainView::SetOptions(std::uint32_t options)
{
    m_options = options;
    if (m_controller)
        m_controller->SetOptions(options);
    return kro::kOk;
}

kro::result_t QtMainView::Forward(kro::result_t (QtViewImpl::*request)())
{
    return m_controller ? Guarded([=, this] { return (m_controller->*request)(); }) : kro::kInvalidState;
}

kro::result_t QtMainView::ShowInitialScreen()
{
    return Forward(&QtViewImpl::ShowInitialScreen);
}

ILoginByPasswordView *QtMainView::GetLoginByPasswordView()
{
    TraceMessage(kTraceDetail) << "pba::QtMainView::GetLoginByPasswordView";
    return m_controller ? m_controller->GetLoginByPasswordView() : nullptr;
}

void QtMainView::Idle() {}

kro::result_t QtMainView::ShowTestBootMessage()
{
    return Forward(&QtViewImpl::ShowTestBootMessage);
}

kro::result_t QtMainView::ShowStartingOsScreen()
{
    return Forward(&QtViewImpl::ShowStartingOsScreen);
}

kro::result_t QtMainView::Close()
{
    return Forward(&QtViewImpl::OnClose);
}

} // namespace pba
