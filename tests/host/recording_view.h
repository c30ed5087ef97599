// A view that only writes down what the host asks of it.
#pragma once

#include <functional>

#include <QByteArray>
#include <QList>

#include "pba/view.h"

class RecordingView final : public pba::IMainView, public pba::ILoginByPasswordView
{
public:
    QList<QByteArray> calls;
    QList<QByteArray> messages;
    pba::ILoginByPasswordLogic *logic = nullptr;
    // Runs while a message stands.
    std::function<void()> duringMessage = [] {};
    kro::result_t closeResult = kro::kOk;

    void SetBusinessLogic(pba::IBusinessLogic *) override {}
    kro::result_t Run() override { return kro::kOk; }
    kro::result_t SetOptions(std::uint32_t options) override
    {
        return Note("SetOptions " + QByteArray::number(options));
    }
    kro::result_t ShowInitialScreen() override { return Note("ShowInitialScreen"); }
    pba::ILoginByPasswordView *GetLoginByPasswordView() override { return this; }
    void Idle() override {}
    kro::result_t ShowTestBootMessage() override { return Note("ShowTestBootMessage"); }
    kro::result_t ShowStartingOsScreen() override { return Note("ShowStartingOsScreen"); }
    kro::result_t Close() override
    {
        Note("Close");
        return closeResult;
    }

    kro::result_t ShowMessage(const kro::wstring_t &title, const kro::wstring_t &message,
                              std::uint32_t severity, std::uint32_t type) override
    {
        messages.append(QString::fromUtf16(title.Data()).toUtf8() + '|' +
                        QString::fromUtf16(message.Data()).toUtf8());
        Note("ShowMessage " + QByteArray::number(severity) + ' ' + QByteArray::number(type));
        duringMessage();
        return kro::kOk;
    }
    pba::IMainView *GetMainView() override { return this; }
    void SetLogic(pba::ILoginByPasswordLogic *newLogic) override
    {
        logic = newLogic;
        Note("SetLogic");
    }
    void SelectPassword() override { Note("SelectPassword"); }
    void SelectUserName() override { Note("SelectUserName"); }
    kro::result_t ShowChangePassword(const kro::wstring_t &, const kro::wstring_t &, bool) override
    {
        return Note("ShowChangePassword");
    }
    kro::result_t ShowLoggedIn() override { return Note("ShowLoggedIn"); }

private:
    kro::result_t Note(const QByteArray &call)
    {
        calls.append(call);
        return kro::kOk;
    }
};
