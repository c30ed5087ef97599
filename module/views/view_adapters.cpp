// SPDX-License-Identifier: Apache-2.0
#include "module/views/view_adapters.h"

#include "module/views/guarded.h"
#include "module/views/host_string.h"
#include "module/views/qt_view_impl.h"

namespace pba {

namespace {

kro::result_t ForwardMessage(QtViewImpl &controller, const kro::wstring_t &title,
                             const kro::wstring_t &message, std::uint32_t severity, std::uint32_t type)
{
    return Guarded([&] {
        controller.ShowMessage(FromHostString(title), FromHostString(message), severity, type, false);
    });
}

} // namespace

QtLoginByPasswordView::QtLoginByPasswordView(QtViewImpl &controller)
    : m_controller(controller)
{
}

kro::result_t QtLoginByPasswordView::ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                                                 std::uint32_t severity, std::uint32_t type)
{
    return ForwardMessage(m_controller, title, message, severity, type);
}

IMainView *QtLoginByPasswordView::GetMainView()
{
    return m_controller.GetMainView();
}

void QtLoginByPasswordView::SetLogic(ILoginByPasswordLogic *logic)
{
    m_controller.SetLogic(logic);
}

void QtLoginByPasswordView::SelectPassword()
{
    Guarded([this] { m_controller.SelectPassword(); });
}

void QtLoginByPasswordView::SelectUserName()
{
    Guarded([this] { m_controller.SelectUserName(); });
}

kro::result_t QtLoginByPasswordView::ShowChangePassword(const kro::wstring_t &title,
                                                        const kro::wstring_t &message, bool hideCancel)
{
    return Guarded([&] {
        return m_controller.ShowChangePassword(FromHostString(title), FromHostString(message), hideCancel);
    });
}

kro::result_t QtLoginByPasswordView::ShowLoggedIn()
{
    return Guarded([this] { return m_controller.ShowLoggedIn(); });
}

QtLoginByTokenView::QtLoginByTokenView(QtViewImpl &controller)
    : m_controller(controller)
{
}

kro::result_t QtLoginByTokenView::ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                                              std::uint32_t severity, std::uint32_t type)
{
    return ForwardMessage(m_controller, title, message, severity, type);
}

IMainView *QtLoginByTokenView::GetMainView()
{
    return m_controller.GetMainView();
}

void QtLoginByTokenView::SetLogic(ILoginByTokenLogic *logic)
{
    m_controller.SetLogic(logic);
}

kro::result_t QtLoginByTokenView::ShowLoggedIn()
{
    return Guarded([this] { return m_controller.ShowLoggedIn(); });
}

QtPasswordRecoveryView::QtPasswordRecoveryView(QtViewImpl &controller)
    : m_controller(controller)
{
}

kro::result_t QtPasswordRecoveryView::ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                                                  std::uint32_t severity, std::uint32_t type)
{
    return ForwardMessage(m_controller, title, message, severity, type);
}

void QtPasswordRecoveryView::SetLogic(IPasswordRecoveryLogic *logic)
{
    m_controller.SetLogic(logic);
}

kro::result_t QtPasswordRecoveryView::StartEntropyCollection(std::uint32_t amount)
{
    return Guarded([&] { return m_controller.StartEntropyCollection(amount); });
}

kro::result_t QtPasswordRecoveryView::ShowChallenge(const kro::vector_t<kro::string_t> &challenge)
{
    return Guarded([&] { return m_controller.ShowChallenge(challenge); });
}

kro::result_t QtPasswordRecoveryView::StartResponceInput()
{
    return Guarded([this] { return m_controller.StartResponceInput(); });
}

} // namespace pba
