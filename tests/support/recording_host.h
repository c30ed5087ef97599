// A host for tests: it implements every interface that the view calls, notes each call, and at any of them
// can fail, call back, or stay silent.
#pragma once

#include <functional>
#include <map>

#include <QByteArray>
#include <QList>

#include "pba/view.h"

class RecordingHost final : public pba::IBusinessLogic,
                            public pba::ILoginByPasswordLogic,
                            public pba::ILoginByTokenLogic,
                            public pba::IPasswordRecoveryLogic
{
public:
    // What happened, in order: the member's name, and the arguments of Login in parentheses.
    QList<QByteArray> calls;
    // By member name: the code to answer with instead of 0, and what to do inside the call.
    std::map<QByteArray, kro::result_t> results;
    std::map<QByteArray, std::function<void()>> actions;
    // The starts hand over no logic.
    bool silent = false;

    bool screenMustChange = false;
    bool tokensConnected = false;
    bool autologonSuppressed = true;
    bool changeAllowed = false;
    bool recoveryInProgress = false;
    QByteArray domain;
    QByteArray userName;

    // Handed over by the view.
    pba::IMainView *view = nullptr;
    pba::ILoginByPasswordView *passwordView = nullptr;
    pba::ILoginByTokenView *tokenView = nullptr;
    pba::IPasswordRecoveryView *recoveryView = nullptr;

    int Count(const QByteArray &call) const { return static_cast<int>(calls.count(call)); }

    kro::result_t Init(pba::IMainView *mainView) override;
    kro::result_t UpdateConnectedTokens(bool *mustChange) override;
    kro::result_t CheckTokensConnected(bool *connected) override;
    kro::result_t StartLoginByPassword(pba::ILoginByPasswordView *view) override;
    kro::result_t StartPasswordRecovery(pba::IPasswordRecoveryView *view) override;
    kro::result_t StartLoginByToken(pba::ILoginByTokenView *view) override;
    kro::result_t StartOperatingSystem() override;

    kro::result_t IsAutologonSuppressed(bool *suppressed) override;
    kro::result_t Login(const kro::wstring_t &loginDomain, const kro::wstring_t &loginUserName,
                        const kro::wstring_t &password) override;
    kro::result_t ConfirmLoggedIn() override;
    kro::result_t GetPasswordChangeInfo(bool *allowed, kro::wstring_t *title,
                                        kro::wstring_t *message) override;
    kro::result_t PrepareChangePassword(kro::wstring_t *outDomain, kro::wstring_t *outUserName) override;
    kro::result_t ChangePassword(const kro::wstring_t &newPassword) override;
    kro::result_t CancelChangePassword() override;

    kro::result_t Reserved() override;
    kro::result_t GetTokens(kro::vector_t<pba::TokenRecord> *tokens) override;
    kro::result_t LoginByToken(std::int32_t index, const kro::string_t &pin) override;

    kro::result_t SetEntropy(const kro::vector_t<std::uint8_t> &entropy) override;
    kro::result_t CheckResponseLine(const kro::string_t &line) override;
    kro::result_t CheckResponse(const kro::vector_t<kro::string_t> &lines, bool *complete,
                                bool *valid) override;
    kro::result_t GotoChangePassword() override;
    bool IsRecoveryInProgress() override;
    kro::result_t QuitRecovery() override;
    kro::result_t RestartRecovery() override;

private:
    kro::result_t Note(const QByteArray &member, const QByteArray &arguments = {});
};
