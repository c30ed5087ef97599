// Any host: its calls, which may fail or ask for screens at any moment, its runs, texts and secrets.
#include <QFile>
#include <QTimer>

#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"

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
        // The call that fails, or "no" and the logic that is missing; what is pressed, unless it fails at the
        // start; the place that is reported, 0 being a line that may change.
        const struct
        {
            QByteArray call;
            const char *button;
            const char *member;
            int line;
        } rows[] = {
            {"Init", nullptr, "InitBusinessLogic", 0},
            {"CheckTokensConnected", nullptr, "IsAnyTokenConnected", 1644},
            {"StartLoginByToken", nullptr, "ShowLoginByTokenScreen", 1684},
            {"GetTokens", nullptr, "UpdateTokenList", 1714},
            {"IsAutologonSuppressed", nullptr, "ShowLoginByPasswordScreen", 1664},
            {"StartLoginByPassword", login, "OnLogin", 629},
            {"Login", login, "OnLogin", 640},
            {"StartOperatingSystem", login, "ShowLoggedInInternal", 1329},
            {"GetPasswordChangeInfo", change, "ShowLoggedInInternal", 1344},
            {"ConfirmLoggedIn", change, "ShowLoggedInInternal", 1365},
            {"PrepareChangePassword", change, "ShowChangePasswordInternal", 1307},
            {"ChangePassword", "saveNewPasswordButton", "OnSavePassword", 697},
            {"CancelChangePassword", "cancelPasswordChange", "OnCancelChangePassword", 714},
            {"StartPasswordRecovery", recover, "OnPasswordRecoveryInternal", 0},
            {"no password logic", login, "OnLogin", 640},
            {"no business logic", login, "OnLogin", 629},
            {"no business logic", recover, "OnPasswordRecoveryInternal", 0},
        };
        for (const auto &row : rows) {
            const QByteArray &call = row.call;
            const bool missing = call.startsWith("no ");
            const bool boxFirst = call == "ConfirmLoggedIn" || row.button == recover;
            Session session(call);
            RecordingHost &host = session.host;
            if (call == "ChangePassword" || call == "CancelChangePassword")
                session.request = [&] { host.passwordView->ShowChangePassword(u"", u"", false); };
            session.options = call.contains("Token") ? 4 : 1;
            host.tokensConnected = call == "StartLoginByToken" || call == "GetTokens";
            host.changeAllowed = call != "ConfirmLoggedIn";
            host.silent = call == "no password logic";
            host.AcceptLogins();
            host.results[call] = kro::kUnexpected;
            if (call != "Init")
                host.actions[call] = [&] { host.view->ShowTestBootMessage(); };
            WriteTextToFile(QString::fromUtf16(pba::kLastUserPath), u"old"_qs);
            session.Play([&] {
                Boxes boxes({boxFirst ? u"button3"_qs : u"Escape"_qs, u"Escape"_qs});
                if (call == "no business logic")
                    host.view->SetBusinessLogic(nullptr);
                if (row.button)
                    Session::LogIn(row.button);
                QTRY_COMPARE(boxes.seen.size(), boxFirst ? 2 : 1);
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
                QString user;
                ReadTextFromFile(QString::fromUtf16(pba::kLastUserPath), &user);
                const bool loggedIn = row.line >= 1307 && row.line <= 1365;
                QCOMPARE(user, loggedIn ? u"u" : u"old");
                if (call == "Login")
                    QVERIFY(fake_pbe::LogText().contains("Internal PBA error. Function: pba::QtViewImpl::"
                                                         "OnLogin, line: 640, res: 0x80000040\r\n"));
            });
        }
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
        const QString host = fake_pbe::FileName(pba::kHostCataloguePath);
        QVERIFY(!CreateTranslator());
        for (const char *bytes : {"", "no catalogue at all"}) {
            fake_pbe::WriteFile(pba::kHostCataloguePath, bytes);
            QVERIFY2(!CreateTranslator(), bytes);
        }
        QVERIFY(QFile::remove(host) && QFile::copy(QStringLiteral(CATALOGUE), host));
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

        QVERIFY(QFile::copy(host, fake_pbe::FileName(pba::kViewCataloguePath)));
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
