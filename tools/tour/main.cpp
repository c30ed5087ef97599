// SPDX-License-Identifier: Apache-2.0
// pba_tour MODULE DIR LANGUAGE: walks the screens of the view module as a person meets them, and writes a
// picture of each to DIR. Needs no display. LANGUAGE is en or that of a translation.
#include <cstdio>

#include <QThread>

#include "pbe/log.h"
#include "tools/tour/stage.h"
#include "host/screen/texts.h"

namespace {

constexpr std::uint32_t kErrors = 300;
constexpr std::uint32_t kDebugging = 800;

void ShowFirstStart(Stage &stage)
{
    const auto request = [&] {
        stage.TakePicture("starting");
        stage.host.view->ShowInitialScreen();
    };
    stage.Play(request, [&] {
        stage.TakePicture("login-first-start");
        stage.TakeMessagePicture("login-without-name", "loginButton");
        stage.Fill("loginDomain", "OFFICE");
        stage.Fill("loginUserName", "boris");
        stage.TakeMessagePicture("login-without-password", "loginButton");
        stage.Fill("loginPassword", "paper-boat 42");
        stage.TakePicture("login-filled");
        stage.TakeListPicture("keyboard-languages", "languageSelector");
        stage.TakeListPicture("keyboard-layouts", "layoutSelector");
    });
}

void ShowLoginMessages(Stage &stage)
{
    RecordingHost &host = stage.host;
    const host::Texts texts(stage.translator);
    const host::MessageText &wrong = host::kWrongPassword;
    stage.Play([&] {
        stage.TakePicture("login-remembered");
        stage.Fill("loginPassword", "paper boat");
        host.actions["Login"] = [&] { texts.Show(host.passwordView, wrong); };
        stage.TakeMessagePicture("wrong-password", "loginButton");
        host.actions["Login"] = [&] {
            host.passwordView->ShowMessage(texts.Get(wrong.title), texts.Get(wrong.text), wrong.severity,
                                           pba::kMessageOffersRecovery);
        };
        stage.TakeMessagePicture("wrong-password-with-reset", "loginButton");
        host.actions.erase("Login");
        host.results["Login"] = kro::kUnspecifiedError;
        stage.TakeMessagePicture("internal-error", "loginButton");
        host.results.clear();
        stage.TakeMessagePicture("password-reset", "startPasswordRecoveryButton");
        stage.TakeMessagePicture("help", "helpButton");
    });
}

void ShowPasswordChange(Stage &stage)
{
    RecordingHost &host = stage.host;
    host.domain = u"OFFICE";
    host.userName = u"boris";
    host.changeAllowed = true;
    host.AcceptLogins();
    stage.Play([&] {
        stage.Fill("loginPassword", "paper-boat 42");
        stage.Click("changePasswordButton");
        stage.TakePicture("password-change");
        stage.Fill("newPassword", "paper-ship 43");
        stage.TakeMessagePicture("new-password-not-confirmed", "saveNewPasswordButton");
    });
}

void ShowTests(Stage &stage)
{
    const auto request = [&] { stage.host.view->ShowTestBootMessage(); };
    stage.Play(request, [&] { stage.TakePicture("test-boot"); });
    stage.WriteFile("pba.ini", "test-mode=true\n");
    stage.Play(request, [&] {
        stage.Fill("testLineEdit", "The quick brown fox");
        stage.TakePicture("keyboard-test");
        stage.TakeMessagePicture("no-help", "helpButton");
    });
}

void ShowRecovery(Stage &stage)
{
    RecordingHost &host = stage.host;
    stage.options = 0;
    host.recoveryInProgress = true;
    host.actions["StartPasswordRecovery"] = [&] { host.recoveryView->StartEntropyCollection(32); };
    host.actions["SetEntropy"] = [&] {
        kro::vector_t<kro::string_t> challenge;
        for (const char *text :
             {"21X3FJY1884KS2VN", "NBQ0V23M6SD166XN", "5D2TN8AFPGQQY0P2", "AW6T73W95RNF9TDC"})
            challenge.PushBack(text);
        host.recoveryView->ShowChallenge(challenge);
    };
    host.responseValid = true;
    stage.Play([&] {
        stage.TakeMessagePicture("reset-begins", "temporaryPasswordRecoveryButton2", "button3");
        stage.Type("Random keys, many of");
        stage.TakePicture("entropy");
        stage.TakeMessagePicture("reset-quit", "quitRecoveryButton", "button2");
        stage.Type("them, until there are enough");
        stage.TakePicture("challenge");
        // Keys count as random until there is a pause.
        QThread::msleep(600);
        stage.Click("continueToResponceButton");
        stage.Type("vdfptrjfze3f35pam");
        host.results["CheckResponseLine"] = kro::kFalse;
        stage.Type("2r385js0wggkc16n9");
        stage.TakePicture("response-line-rejected");
        host.results.clear();
        host.responseComplete = true;
        stage.Press(Qt::Key_Backspace);
        stage.Type("8");
        stage.TakePicture("response-accepted");
    });
}

// A first page that depends on the options and the host.
void ShowFirstPage(Stage &stage, const char *name, std::uint32_t options)
{
    stage.options = options;
    stage.Play([&] { stage.TakePicture(name); });
}

void ShowTokens(Stage &stage)
{
    RecordingHost &host = stage.host;
    const std::uint32_t both = pba::kOptionLoginByToken | pba::kOptionLoginByPassword;
    host.tokensConnected = true;
    host.tokens = {"Blue card"};
    ShowFirstPage(stage, "one-token", both);
    host.tokens.append("A security key with a name of many words (2f6a 01c4)");
    ShowFirstPage(stage, "two-tokens", both);
    host.tokens.append(QList<QByteArray>(6, "Security-key-without-a-blank-in-its-very-long-name"));
    ShowFirstPage(stage, "eight-tokens", both);
    host.tokensConnected = false;
}

void ShowAll(Stage &stage)
{
    ShowFirstStart(stage);
    stage.WriteText("last_dmn.txt", "OFFICE");
    stage.WriteText("last_usr.txt", "boris");
    ShowLoginMessages(stage);
    ShowPasswordChange(stage);
    ShowRecovery(stage);
    ShowTokens(stage);
    ShowTests(stage);
    PbeSetLogSeverity(kDebugging);
    ShowFirstPage(stage, "debug-logging", pba::kOptionLoginByPassword);
    PbeSetLogSeverity(kErrors);
    ShowFirstPage(stage, "no-tokens", pba::kOptionLoginByToken);
    ShowFirstPage(stage, "no-users", 0);
    stage.Play([&] { stage.host.view->ShowStartingOsScreen(); },
               [&] { stage.TakePicture("starting-windows"); });
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: pba_tour MODULE DIR LANGUAGE\n", stderr);
        return 2;
    }
    Stage stage(argv[1], QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3]));
    ShowAll(stage);
    return stage.Faults() == 0 ? 0 : 1;
}
