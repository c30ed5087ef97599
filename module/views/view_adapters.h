// SPDX-License-Identifier: Apache-2.0
// The narrow views that the host is handed for each activity: forwarders to the one controller.
#pragma once

#include "pba/view.h"

namespace pba {

class QtViewImpl;

class QtLoginByPasswordView final : public ILoginByPasswordView
{
public:
    explicit QtLoginByPasswordView(QtViewImpl &controller);

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                              std::uint32_t severity, std::uint32_t type) override;
    IMainView *GetMainView() override;
    void SetLogic(ILoginByPasswordLogic *logic) override;
    void SelectPassword() override;
    void SelectUserName() override;
    kro::result_t ShowChangePassword(const kro::wstring_t &title, const kro::wstring_t &message,
                                     bool hideCancel) override;
    kro::result_t ShowLoggedIn() override;

private:
    QtViewImpl &m_controller;
};

class QtLoginByTokenView final : public ILoginByTokenView
{
public:
    explicit QtLoginByTokenView(QtViewImpl &controller);

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                              std::uint32_t severity, std::uint32_t type) override;
    IMainView *GetMainView() override;
    void SetLogic(ILoginByTokenLogic *logic) override;
    kro::result_t ShowLoggedIn() override;

private:
    QtViewImpl &m_controller;
};

class QtPasswordRecoveryView final : public IPasswordRecoveryView
{
public:
    explicit QtPasswordRecoveryView(QtViewImpl &controller);

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                              std::uint32_t severity, std::uint32_t type) override;
    void SetLogic(IPasswordRecoveryLogic *logic) override;
    kro::result_t StartEntropyCollection(std::uint32_t amount) override;
    kro::result_t ShowChallenge(const kro::vector_t<kro::string_t> &challenge) override;
    kro::result_t StartResponceInput() override;

private:
    QtViewImpl &m_controller;
};

} // namespace pba
