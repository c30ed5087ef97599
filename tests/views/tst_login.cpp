// SPDX-License-Identifier: Apache-2.0
// Login by password: the page, domain and last user, what goes to the host, automatic logon; the change of
// the password that follows.
#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"

static QString Remembered(const char16_t *path)
{
    QString text = u"(none)"_qs;
    ReadTextFromFile(QString::fromUtf16(path), &text);
    return text;
}

class TestLogin : public QObject
{
    Q_OBJECT

private slots:
    void Page()
    {
        const QString none;
        const struct
        {
            const char *name;
            QString domain, user, focus;
        } rows[] = {{"first start", none, none, u"loginDomain"_qs},
                    {"user only", none, u"anna"_qs, u"loginDomain"_qs},
                    {"domain only", u"OFFICE"_qs, none, u"loginUserName"_qs},
                    {"empty domain", u""_qs, u"anna"_qs, u"loginPassword"_qs},
                    {"both", u"D%1 \u0416"_qs, u"  a b "_qs, u"loginPassword"_qs}};
        for (const auto &row : rows) {
            Session session(row.name);
            if (!row.domain.isNull())
                WriteTextToFile(QString::fromUtf16(pba::kLastDomainPath), row.domain);
            if (!row.user.isNull())
                WriteTextToFile(QString::fromUtf16(pba::kLastUserPath), row.user);
            session.Play([&] {
                QTRY_COMPARE(Session::FocusName(), row.focus);
                const bool remembered = !row.domain.isNull();
                QCOMPARE(Session::Find("changeDomainButton")->isVisible(), remembered);
                QCOMPARE(Session::Field("loginDomain")->isVisible(), !remembered);
                QCOMPARE(Session::Label("domainLabel")->isVisible(), remembered);
                QCOMPARE(Session::Field("loginDomain")->text(), row.domain);
                QVERIFY(!remembered || Session::Label("domainLabel")->text() == u"Domain: "_qs + row.domain);
                QCOMPARE(Session::Field("loginUserName")->text(), row.user);
            });
        }
    }

    void EmptyFieldsAreRefused()
    {
        Session session;
        session.Play([&] {
            const auto refusal = [](const QString &user, const QString &password) {
                Boxes boxes({u"button3"_qs});
                Session::LogIn("loginButton", user, password);
                return boxes.seen.isEmpty() ? QString() : boxes.seen[0].title;
            };
            QCOMPARE(refusal({}, u"p"_qs), u"User name field is empty");
            QVERIFY(!Session::Find("changePasswordButton")->isEnabled());
            QCOMPARE(refusal(u"u"_qs, {}), u"Password field is empty");
            QVERIFY(!Session::Find("changePasswordButton")->isEnabled());
            QCOMPARE(session.host.Count("StartLoginByPassword"), 0);
            QCOMPARE(refusal(u" "_qs, u" "_qs), u"");
            QPushButton *link = Session::Find("changePasswordButton");
            QVERIFY(link->isEnabled());
            QCOMPARE(session.host.calls.last(), "Login(, , )");
            QEnterEvent enter({}, {}, {});
            QCoreApplication::sendEvent(link, &enter);
            QVERIFY(!link->styleSheet().isEmpty());
            Session::Field("loginPassword")->clear();
            QVERIFY(link->styleSheet().isEmpty());
        });
    }

    // As a person does it: domain, Tab, name, Tab, password, Return; and later another domain. Begun before
    // the event loop has turned: what is typed at once, and where that leads, stays.
    void TypedLoginReachesTheHost()
    {
        Session session;
        WriteTextToFile(QString::fromUtf16(pba::kLastUserPath), u""_qs);
        session.host.actions["IsAutologonSuppressed"] = [&] {
            if (session.host.Count("Login(OFFICE,anna,s3 cret)") > 0)
                return;
            Session::Type(u"OFFICE"_qs);
            Session::Press(Qt::Key_Tab);
        };
        session.host.actions["Login"] = [&] {
            // A message in the call may lead to other texts in the fields.
            for (const char *field : {"loginDomain", "loginUserName", "loginPassword"})
                Session::Field(field)->setText(u"other"_qs);
            session.host.passwordView->SelectPassword();
            Session::Type(u"x"_qs);
            QCOMPARE(Session::Field("loginPassword")->text(), u"x");
            session.host.view->ShowInitialScreen();
        };
        session.Play([&] {
            QTest::qWait(1);
            Session::Type(u"anna"_qs);
            Session::Press(Qt::Key_Tab);
            Session::Type(u"s3 cret"_qs);
            Session::Press(Qt::Key_Return);
            QCOMPARE(session.host.Count("Login(OFFICE,anna,s3 cret)"), 1);
            QCOMPARE(Remembered(pba::kLastDomainPath), u"OFFICE");
            QCOMPARE(Remembered(pba::kLastUserPath), u"anna");
            QVERIFY(!fake_pbe::LogText().contains("s3 cret"));
            QCOMPARE(fake_pbe::LogText().count("key:"), 1);

            QTRY_COMPARE(Session::FocusName(), u"loginPassword");
            Session::Click("changeDomainButton");
            QTRY_COMPARE(Session::FocusName(), u"loginDomain");
            QVERIFY(!Session::Label("domainLabel")->isVisible());
            QCOMPARE(Remembered(pba::kLastDomainPath), u"OFFICE");
            Session::LogIn();
            QCOMPARE(session.host.Count("Login(,u,p)"), 1);
            QCOMPARE(Remembered(pba::kLastDomainPath), u"");
        });
    }

    void AutomaticLogonReadsItsFile()
    {
        const struct
        {
            const char *name;
            QByteArray file;
            QString fields;
        } rows[] = {{"no file", {}, u"typed|so far"_qs},
                    {"empty file", "", u"typed|so far"_qs},
                    {"cannot be opened", QByteArray(4 * 1024 * 1024 + 1, '\n'), u"typed|so far"_qs},
                    {"one line, ended", "anna\r\n", u"typed|so far"_qs},
                    {"two lines", "anna\r\n p w \r\nmore", u"anna| p w "_qs},
                    {"UTF-16", {"\xFF\xFE\x16\x04\n\0b\0", 8}, u"\u0416|b"_qs},
                    {"empty password", "anna\n\n", u"anna|"_qs}};
        for (const auto &row : rows) {
            Session session(row.name);
            if (!row.file.isNull())
                fake_pbe::WriteFile(pba::kAutologonPath, row.file);
            session.Play([&] {
                Session::Field("loginUserName")->setText(u"typed"_qs);
                Session::Field("loginPassword")->setText(u"so far"_qs);
                QMetaObject::invokeMethod(Session::Dialog(), "TryToAutologon");
                QCOMPARE(Session::Field("loginUserName")->text() + u'|' +
                             Session::Field("loginPassword")->text(),
                         row.fields);
            });
        }
    }

    // At first without a logic that could suppress it, then with one that does.
    void AutomaticLogonAsksTheHost()
    {
        Session session;
        fake_pbe::WriteFile(pba::kAutologonPath, "anna\npw\n");
        session.host.silent = true;
        session.host.actions["Login"] = [&] { session.host.view->ShowInitialScreen(); };
        session.Play([&] {
            session.host.silent = false;
            QTRY_VERIFY_WITH_TIMEOUT(session.host.calls.contains("Login(,anna,pw)"), 9000);
            QTest::qWait(2200);
            QCOMPARE(fake_pbe::LogText().count("Autologon: try"), 1);
        });
    }

    void PasswordChangeAfterLogin()
    {
        Session session;
        session.host.changeAllowed = true;
        session.Play([&] {
            // The wish outlives a login that the host does not accept.
            Session::LogIn("changePasswordButton");
            session.host.AcceptLogins();
            Session::LogIn();
            QCOMPARE(Session::Screen(), 1);
            QCOMPARE(session.host.calls.last(), "PrepareChangePassword");
            Session::LogIn();
            QCOMPARE(session.host.calls.last(), "StartOperatingSystem");
            // Nobody has switched the memory of the last user on.
            QCOMPARE(Remembered(pba::kLastUserPath), u"(none)");

            session.host.changeAllowed = false;
            Boxes boxes({u"button3"_qs});
            Session::LogIn("changePasswordButton");
            QCOMPARE(session.host.calls.last(), "ConfirmLoggedIn");
            QCOMPARE(boxes.seen.size(), 1);
            QVERIFY(boxes.seen[0].title == u"Not now" && boxes.seen[0].errorTitle);
        });
    }

    void PasswordChangePage()
    {
        Session session;
        session.host.userName = u"u%0";
        session.request = [&] { session.host.passwordView->ShowChangePassword(u"Expired", u"Now.", true); };
        session.host.actions["ChangePassword"] = [&] {
            session.host.domain = u"DOM%1";
            session.host.passwordView->ShowChangePassword(u"", u"", false);
        };
        session.Play([&] {
            QCOMPARE(Session::Screen(), 1);
            QCOMPARE(Session::Label("changePasswordTitle")->text(), u"Expired");
            QCOMPARE(Session::Label("changePasswordUserNameLabel")->text(), u"User: u%0");
            QVERIFY(!Session::Find("cancelPasswordChange")->isVisible());

            Boxes boxes({u"button3"_qs});
            const auto enter = [&](const QString &first, const QString &second) {
                Session::Field("newPassword")->setText(first);
                Session::Field("confirmNewPassword")->setText(second);
                QTest::keyClick(Session::Field("confirmNewPassword"), Qt::Key_Return);
                return session.host.calls.last();
            };
            QCOMPARE(enter(u"New"_qs, u"new"_qs), "PrepareChangePassword");
            QCOMPARE(boxes.seen.size(), 1);
            QCOMPARE(Session::Field("confirmNewPassword")->text(), u"new");
            // The host judges.
            QCOMPARE(enter({}, {}), "ChangePassword()");
            QTRY_VERIFY(Session::Find("cancelPasswordChange")->isVisible());
            // Return was pressed twice: the host has taken the password by then.
            for (int times = 0; times < 2; ++times)
                QCOMPARE(enter(u"n3w"_qs, u"n3w"_qs), "ChangePassword(n3w)");
            QCOMPARE(session.host.Count("ChangePassword(n3w)"), 1);
            QTRY_COMPARE(session.host.Count("PrepareChangePassword"), 3);
            QCOMPARE(Session::Label("changePasswordUserNameLabel")->text(), u"Domain: DOM%1, User: u%0");
            Session::Click("cancelPasswordChange");
            QCOMPARE(session.host.calls.last(), "CancelChangePassword");
        });
    }
};

PBA_REGISTER_TEST(TestLogin);
#include "tst_login.moc"
