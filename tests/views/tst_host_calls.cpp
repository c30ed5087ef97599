// SPDX-License-Identifier: Apache-2.0
// Any host: its calls, which may fail or ask for screens at any moment, its runs, texts and secrets.
#include <QDir>
#include <QTimer>

#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "tests/support/test_files.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"

// Whether a file of the controller calls the member in that line.
static bool IsCalledIn(int line, const QByteArray &member)
{
    const QDir sources(QStringLiteral(VIEW_SOURCES));
    for (const QString &name : sources.entryList({u"qt_view_impl*.cpp"_qs})) {
        QFile source(sources.filePath(name));
        if (source.open(QIODevice::ReadOnly) && source.readAll().split('\n').value(line - 1).contains(member))
            return true;
    }
    return false;
}

class TestHostCalls : public QObject
{
    Q_OBJECT

private slots:
    // The report names the place, nothing is remembered of a login that failed, and the request made in the
    // failed call waits.
    void EveryCallMayFail()
    {
        const char *login = "loginButton";
        const char *change = "changePasswordButton";
        const char *recover = "startPasswordRecoveryButton";
        const QString old = u"old"_qs, user = u"u"_qs;
        // The call that fails, or "no" and the logic that is missing; what is pressed, unless it fails at the
        // start; how many messages stand, the last being the report; the place that is reported, 0 being
        // the line of the call; the user who is remembered then.
        const struct
        {
            QByteArray call;
            const char *button;
            int messages;
            const char *member;
            int line;
            QString remembered;
        } rows[] = {
            {"Init", nullptr, 1, "InitBusinessLogic", 0, old},
            {"CheckTokensConnected", nullptr, 1, "IsAnyTokenConnected", 1644, old},
            {"StartLoginByToken", nullptr, 1, "ShowLoginByTokenScreen", 1684, old},
            {"GetTokens", nullptr, 1, "UpdateTokenList", 1714, old},
            {"IsAutologonSuppressed", nullptr, 1, "ShowLoginByPasswordScreen", 1664, old},
            {"StartLoginByPassword", login, 1, "OnLogin", 629, old},
            {"Login", login, 1, "OnLogin", 640, old},
            {"StartOperatingSystem", login, 1, "ShowLoggedInInternal", 1329, user},
            {"GetPasswordChangeInfo", change, 1, "ShowLoggedInInternal", 1344, user},
            {"ConfirmLoggedIn", change, 2, "ShowLoggedInInternal", 1365, user},
            {"PrepareChangePassword", change, 1, "ShowChangePasswordInternal", 1307, user},
            {"ChangePassword", "saveNewPasswordButton", 1, "OnSavePassword", 697, old},
            {"CancelChangePassword", "cancelPasswordChange", 1, "OnCancelChangePassword", 714, old},
            {"StartPasswordRecovery", recover, 2, "OnPasswordRecoveryInternal", 0, old},
            {"no password logic", login, 1, "OnLogin", 640, old},
            {"no business logic", login, 1, "OnLogin", 629, old},
            {"no business logic", recover, 2, "OnPasswordRecoveryInternal", 0, old},
        };
        for (const auto &row : rows) {
            const QByteArray &call = row.call;
            const bool missing = call.startsWith("no ");
            Session session(call);
            RecordingHost &host = session.host;
            if (call == "ChangePassword" || call == "CancelChangePassword")
                session.request = [&] { host.passwordView->ShowChangePassword(u"", u"", false); };
            session.options = call.contains("Token") ? 4 : 1;
            host.tokensConnected = true;
            host.changeAllowed = call != "ConfirmLoggedIn";
            host.silent = call == "no password logic";
            host.AcceptLogins();
            host.results[call] = kro::kUnexpected;
            if (call != "Init")
                host.actions[call] = [&] { host.view->ShowTestBootMessage(); };
            WriteTextToFile(QString::fromUtf16(pba::kLastUserPath), old);
            session.Play([&] {
                Boxes boxes({row.messages > 1 ? u"button3"_qs : u"Escape"_qs, u"Escape"_qs});
                if (call == "no business logic")
                    host.view->SetBusinessLogic(nullptr);
                if (row.button)
                    Session::LogIn(row.button);
                QTRY_COMPARE(boxes.seen.size(), row.messages);
                const Box &report = boxes.seen.last();
                const QString place = u"Function: pba::QtViewImpl::%1\nLine: %2"_qs.arg(
                    QString::fromLatin1(row.member),
                    row.line ? QString::number(row.line) + u'\n' : QString());
                QCOMPARE(report.title + report.buttons, u"Internal Error");
                QVERIFY2(report.text.startsWith(u"Internal PBA error.\n\n"_qs + place),
                         qPrintable(report.text));
                QVERIFY(report.text.endsWith(missing ? u"\nres: 8000006b(Not initialized)"
                                                     : u"\nres: 80000040(Unexpected)"));
                QVERIFY(!report.waiting);
                QVERIFY(Session::Screen() != 5);
                QString remembered;
                ReadTextFromFile(QString::fromUtf16(pba::kLastUserPath), &remembered);
                QCOMPARE(remembered, row.remembered);
                const int line = report.text.section(u"Line: "_qs, 1).section(u'\n', 0, 0).toInt();
                QVERIFY2(row.line || missing || IsCalledIn(line, "->" + call + '('), qPrintable(report.text));
                if (call == "Login")
                    QVERIFY(fake_pbe::LogText().contains("Internal PBA error. Function: pba::QtViewImpl::"
                                                         "OnLogin, line: 640, res: 0x80000040\r\n"));
            });
        }
    }

    // Without memory, wherever it is missed: no exception reaches the host, and the run goes on.
    void RequestsWithoutMemory()
    {
        Session session;
        session.Play([&] {
            const auto run = [](const std::function<void()> &request) {
                const auto fail = [] { throw std::bad_alloc(); };
                const auto onFocus = QObject::connect(qApp, &QApplication::focusChanged, fail);
                const auto onPage = QObject::connect(Session::Find<QStackedWidget>("stackedWidget"),
                                                     &QStackedWidget::currentChanged, fail);
                request();
                QObject::disconnect(onFocus);
                QObject::disconnect(onPage);
            };
            QTRY_COMPARE(Session::FocusName(), u"loginDomain");
            pba::ILoginByPasswordView *view = session.host.passwordView;
            run([view] { view->SelectUserName(); });
            run([view] { view->SelectPassword(); });
            run([&] { QCOMPARE(session.host.view->ShowStartingOsScreen(), kro::kOutOfMemory); });
        });
    }

    void EndlessRequestsDoNotUseUpTheStack()
    {
        Session session;
        session.host.actions["IsAutologonSuppressed"] = [&] { session.host.view->ShowInitialScreen(); };
        session.Play([&] {
            QTRY_VERIFY(session.host.Count("IsAutologonSuppressed") > 200);
            QCOMPARE(Session::Screen(), 0);
        });
    }

    void RunEndsWithAMessageInFront()
    {
        Session session;
        session.host.actions["Login"] = [&] {
            session.host.view->Close();
            // Meanwhile another login, by a timer, carries the request out behind the message.
            session.host.actions.erase("Login");
            QTimer::singleShot(0, qApp, [] { QMetaObject::invokeMethod(Session::Dialog(), "OnLogin"); });
            session.host.passwordView->ShowMessage(u"Wait", u"A message that nobody closes", 0, 2);
        };
        QCOMPARE(session.Play([] { Session::LogIn(); }), kro::kOk);
    }

    // What the catalogue does not know comes back byte by byte.
    void Catalogues()
    {
        Session session;
        QVERIFY(!CreateTranslator() && !fake_pbe::LogText().contains("PBE"));
        const QByteArray sound = ReadFile(QStringLiteral(CATALOGUE));
        for (qsizetype i = -1; i < sound.size(); ++i) {
            QByteArray spoilt = i < 0 ? QByteArray() : sound;
            if (i >= 0)
                spoilt[i] = char(~spoilt[i]);
            fake_pbe::WriteFile(pba::kHostCataloguePath, spoilt);
            fake_pbe::Now().messages.clear();
            pba::ITranslator *translator = CreateTranslator();
            QCOMPARE(fake_pbe::LogText().contains("\\pba\\l10n_pba is damaged"), !translator);
            if (translator)
                translator->Translate("pba_host", "Starting Windows", nullptr);
            DeleteTranslator(translator);
            QVERIFY(!translator || i >= 16); // the magic number
        }
        fake_pbe::WriteFile(pba::kViewCataloguePath, sound.chopped(1));
        session.Play([] { QCOMPARE(Session::Label("label_23")->text(), u"Starting Windows"_qs); });
        fake_pbe::WriteFile(pba::kHostCataloguePath, sound);
        pba::ITranslator *translator = CreateTranslator();
        QVERIFY(translator);
        const std::pair<const char *, std::u16string_view> texts[] = {{"Starting Windows", u"Start \u00FC"},
                                                                      {"Log on %1", u"Log on %1"},
                                                                      {"a\xE9\x80", u"a\uFFE9\uFF80"},
                                                                      {nullptr, u""}};
        for (const auto &[source, text] : texts)
            QVERIFY2(translator->Translate("pba_host", source, nullptr).View() == text, source);
        QVERIFY(translator->Translate("pba_host", "%n tries", nullptr, 3).View() == u"%n Versuche");
        DeleteTranslator(translator);

        fake_pbe::WriteFile(pba::kViewCataloguePath, sound);
        session.Play([] { QCOMPARE(Session::Label("label_23")->text(), u"Start \u00FC"); });
    }

    void WipedStringIsEmptyToItsLastByte()
    {
        kro::wstring_t secret(u"a long secret");
        secret.Resize(3);
        const char16_t *buffer = secret.Data();
        const std::size_t capacity = secret.Capacity();
        secret.Wipe();
        QVERIFY(secret.IsEmpty());
        QVERIFY(std::all_of(buffer, buffer + capacity + 1, [](char16_t unit) { return unit == 0; }));
    }
};

PBA_REGISTER_TEST(TestHostCalls);
#include "tst_host_calls.moc"
