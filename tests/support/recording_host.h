// SPDX-License-Identifier: Apache-2.0
// A host for tests: it implements every interface that the view calls, notes each call, and at any of them
// can fail, call back, or stay silent.
#pragma once

#include <functional>
#include <map>

#include <QByteArray>
#include <QList>
#include <QString>

#include "pba/view.h"

class RecordingHost final : public pba::IBusinessLogic,
                            public pba::ILoginByPasswordLogic,
                            public pba::ILoginByTokenLogic,
                            public pba::IPasswordRecoveryLogic
{
    using Code = kro::result_t;
    using Wide = kro::wstring_t;

public:
    // What happened, in order: the member's name, and the arguments of some in parentheses.
    QList<QByteArray> calls;
    // By member name: the code to answer with instead of 0, and what to do inside the call.
    std::map<QByteArray, Code> results;
    std::map<QByteArray, std::function<void()>> actions;
    // Init and the starts hand over no logic.
    bool silent = false;

    bool screenMustChange = false;
    bool tokensConnected = false;
    // The names that GetTokens answers.
    QList<QByteArray> tokens;
    bool autologonSuppressed = true;
    bool changeAllowed = false;
    bool recoveryInProgress = false;
    bool responseComplete = false;
    bool responseValid = false;
    Wide domain;
    Wide userName;
    // What the last SetEntropy brought.
    QByteArray entropy;

    // Handed over in Init.
    pba::IMainView *view = nullptr;
    pba::ILoginByPasswordView *passwordView = nullptr;
    // Handed over by StartPasswordRecovery.
    pba::IPasswordRecoveryView *recoveryView = nullptr;

    int Count(const QByteArray &call) const { return static_cast<int>(calls.count(call)); }
    void AcceptLogins()
    {
        actions["Login"] = [this] { passwordView->ShowLoggedIn(); };
    }

    Code Init(pba::IMainView *mainView) override
    {
        view = mainView;
        passwordView = view->GetLoginByPasswordView();
        return Start(__func__, passwordView);
    }
    Code UpdateConnectedTokens(bool *out) override { return Tell(__func__, out, screenMustChange); }
    Code CheckTokensConnected(bool *out) override { return Tell(__func__, out, tokensConnected); }
    Code StartLoginByPassword(pba::ILoginByPasswordView *handed) override { return Start(__func__, handed); }
    Code StartPasswordRecovery(pba::IPasswordRecoveryView *handed) override
    {
        recoveryView = handed;
        return Start(__func__, handed);
    }
    Code StartLoginByToken(pba::ILoginByTokenView *handed) override { return Start(__func__, handed); }
    Code StartOperatingSystem() override { return Note(__func__); }

    Code IsAutologonSuppressed(bool *out) override { return Tell(__func__, out, autologonSuppressed); }
    Code Login(const Wide &loginDomain, const Wide &loginUserName, const Wide &password) override
    {
        return Note(__func__, Utf8(loginDomain) + ',' + Utf8(loginUserName) + ',' + Utf8(password));
    }
    Code ConfirmLoggedIn() override { return Note(__func__); }
    Code GetPasswordChangeInfo(bool *allowed, Wide *title, Wide *message) override
    {
        *title = u"Not now";
        *message = u"The password was changed today.";
        return Tell(__func__, allowed, changeAllowed);
    }
    Code PrepareChangePassword(Wide *outDomain, Wide *outUserName) override
    {
        *outDomain = domain;
        *outUserName = userName;
        return Note(__func__);
    }
    Code ChangePassword(const Wide &newPassword) override { return Note(__func__, Utf8(newPassword)); }
    Code CancelChangePassword() override { return Note(__func__); }

    Code Reserved() override { return Note(__func__); }
    Code GetTokens(kro::vector_t<pba::TokenRecord> *list) override
    {
        for (const QByteArray &name : tokens)
            list->PushBack({name.constData(), "id"});
        return Note(__func__);
    }
    Code LoginByToken(std::int32_t index, const kro::string_t &pin) override
    {
        return Note(__func__, QByteArray::number(index) + ',' + pin.Data());
    }

    using Lines = kro::vector_t<kro::string_t>;
    Code SetEntropy(const kro::vector_t<std::uint8_t> &bytes) override
    {
        entropy = QByteArray(reinterpret_cast<const char *>(bytes.Data()), qsizetype(bytes.Size()));
        return Note(__func__);
    }
    Code CheckResponseLine(const kro::string_t &line) override { return Note(__func__, line.Data()); }
    Code CheckResponse(const Lines &lines, bool *complete, bool *valid) override
    {
        *complete = responseComplete;
        *valid = responseValid;
        return Note(__func__, QByteArray::number(qulonglong(lines.Size())));
    }
    Code GotoChangePassword() override { return Note(__func__); }
    bool IsRecoveryInProgress() override
    {
        Call(__func__);
        return recoveryInProgress;
    }
    Code QuitRecovery() override { return Note(__func__); }
    Code RestartRecovery() override { return Note(__func__); }

private:
    static QByteArray Utf8(const Wide &text)
    {
        return QString::fromUtf16(text.Data(), qsizetype(text.Length())).toUtf8();
    }

    Code Call(const QByteArray &member)
    {
        if (const auto action = actions.find(member); action != actions.end())
            std::function<void()>(action->second)();
        const auto result = results.find(member);
        return result == results.end() ? kro::kOk : result->second;
    }
    Code Note(const QByteArray &member)
    {
        calls.append(member);
        return Call(member);
    }
    Code Note(const QByteArray &member, const QByteArray &arguments)
    {
        calls.append(member + '(' + arguments + ')');
        return Call(member);
    }

    Code Tell(const char *member, bool *out, bool value)
    {
        *out = value;
        return Note(member);
    }

    template <typename View>
    Code Start(const char *member, View *handed)
    {
        if (!silent)
            handed->SetLogic(this);
        return Note(member);
    }
};
