// Messages, confirmations, internal errors, the warning of debug logging, help.
#include <QTest>

#include "fake_pbe.h"
#include "settings/paths.h"
#include "settings/text_file.h"
#include "test_main.h"
#include "views/session.h"

class TestMessages : public QObject
{
    Q_OBJECT

private slots:
    void Message_data();
    void Message();
    void StartOfRecoveryNeedsItsButton_data();
    void StartOfRecoveryNeedsItsButton();
    void InternalError_data();
    void InternalError();
    void LoggingWarning_data();
    void LoggingWarning();
    void Help_data();
    void Help();
    void TextsAreLoggedAsTheyAre();
};

void TestMessages::Message_data()
{
    QTest::addColumn<quint32>("severity");
    QTest::addColumn<quint32>("type");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QString>("buttons");
    QTest::addColumn<bool>("confirms");
    QTest::addColumn<bool>("recovers");
    const QString plain = u"button3=CONTINUE"_qs;
    const QString offer = u"button1=Forgot your password?,button3=CONTINUE"_qs;
    QTest::newRow("information") << 0u << 0u << "button3" << plain << false << false;
    QTest::newRow("error, closed by Escape") << 2u << 0u << "Escape" << plain << false << false;
    QTest::newRow("unknown severity and type") << 77u << 77u << "button3" << plain << false << false;
    QTest::newRow("recovery offered, declined") << 1u << 1u << "button3" << offer << false << false;
    QTest::newRow("recovery offered, closed") << 1u << 1u << "Escape" << offer << false << false;
    QTest::newRow("recovery offered, accepted") << 1u << 1u << "button1" << offer << true << true;
    QTest::newRow("recovery forced, CONTINUE") << 1u << 2u << "button3" << offer << false << true;
    QTest::newRow("recovery forced, closed") << 1u << 2u << "Escape" << offer << false << true;
}

// A message inside a login: recovery follows when the login has returned, with its confirmation or without.
void TestMessages::Message()
{
    QFETCH(quint32, severity);
    QFETCH(quint32, type);
    QFETCH(QString, answer);
    QFETCH(QString, buttons);
    QFETCH(bool, confirms);
    QFETCH(bool, recovers);
    Session session;
    session.host.actions["Login"] = [&] {
        session.host.passwordView->ShowMessage(u"Title %1", u"Two\nlines", severity, type);
        QCOMPARE(session.host.Count("StartPasswordRecovery"), 0);
    };
    session.Play([&] {
        Boxes boxes({answer, u"button3"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(boxes.seen[0].title, u"Title %1");
        QCOMPARE(boxes.seen[0].text, u"Two\nlines");
        QCOMPARE(boxes.seen[0].buttons.join(u','), buttons);
        QCOMPARE(boxes.seen[0].errorTitle, severity == 2);
        QVERIFY(!boxes.seen[0].version);
        QCOMPARE(boxes.seen.size(), confirms ? 2 : 1);
        QCOMPARE(session.host.Count("StartPasswordRecovery"), recovers ? 1 : 0);
    });
}

void TestMessages::StartOfRecoveryNeedsItsButton_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("starts");
    QTest::newRow("CONTINUE") << "button3" << 1;
    QTest::newRow("CANCEL") << "button2" << 0;
    QTest::newRow("Escape") << "Escape" << 0;
}

void TestMessages::StartOfRecoveryNeedsItsButton()
{
    QFETCH(QString, answer);
    QFETCH(int, starts);
    Session session;
    session.Play([&] {
        Boxes boxes({answer});
        Session::Click("startPasswordRecoveryButton");
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen[0].buttons, (QStringList{u"button2=CANCEL"_qs, u"button3=CONTINUE"_qs}));
        QCOMPARE(session.host.Count("StartPasswordRecovery"), starts);
        QCOMPARE(Session::Screen(), 0);
    });
}

void TestMessages::InternalError_data()
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<quint32>("code");
    QTest::addColumn<QString>("report");
    QTest::addColumn<QByteArray>("log");
    QTest::newRow("start of login")
        << QByteArray("StartLoginByPassword") << 0x8000004Bu
        << "Function: pba::QtViewImpl::OnLogin\nLine: 629\nres: 8000004b(Unspecified error)"
        << QByteArray("Internal PBA error. Function: pba::QtViewImpl::OnLogin, line: 629, res: 0x8000004B");
    QTest::newRow("login, code of the platform")
        << QByteArray("Login") << 0x80010102u
        << "Function: pba::QtViewImpl::OnLogin\nLine: 640\nres: 80010102(File not found)"
        << QByteArray("Internal PBA error. Function: pba::QtViewImpl::OnLogin, line: 640, res: 0x80010102");
}

void TestMessages::InternalError()
{
    QFETCH(QByteArray, call);
    QFETCH(quint32, code);
    QFETCH(QString, report);
    QFETCH(QByteArray, log);
    Session session;
    session.host.results[call] = static_cast<kro::result_t>(code);
    session.Play([&] {
        fake_pbe::SetSeverity(300);
        Boxes boxes({u"Escape"_qs});
        Session::EnterCredentials(u"u"_qs, u"p"_qs);
        Session::Click("loginButton");
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen[0].title, u"Internal Error");
        QCOMPARE(boxes.seen[0].text, u"Internal PBA error.\n\n"_qs + report);
        QVERIFY(boxes.seen[0].buttons.isEmpty());
        QVERIFY(fake_pbe::LogText().endsWith(log + "\r\n"));
        QCOMPARE(fake_pbe::Messages().back().severity, 300u);
    });
}

void TestMessages::LoggingWarning_data()
{
    QTest::addColumn<quint32>("severity");
    QTest::addColumn<bool>("passive");
    QTest::addColumn<QString>("warning");
    const QString debug =
        u"WARNING!\nDebug logging is enabled.\nYour private data can be saved to log file."_qs;
    const QString verbose =
        u"WARNING!\nVerbose debug logging is enabled.\nYour private data can be saved to log file."_qs;
    QTest::newRow("799") << 799u << false << QString();
    QTest::newRow("800") << 800u << false << debug;
    QTest::newRow("999") << 999u << false << debug;
    QTest::newRow("1000") << 1000u << false << verbose;
    QTest::newRow("999 on the test-boot page") << 999u << true << QString();
    QTest::newRow("1000 on the test-boot page") << 1000u << true << verbose;
}

void TestMessages::LoggingWarning()
{
    QFETCH(quint32, severity);
    QFETCH(bool, passive);
    QFETCH(QString, warning);
    Session session;
    session.showInitialScreen = false;
    session.host.actions["Init"] = [&] {
        fake_pbe::SetSeverity(severity);
        if (passive)
            session.host.view->ShowTestBootMessage();
        else
            session.host.view->ShowInitialScreen();
    };
    session.Play([&] {
        QTRY_COMPARE(Session::Screen(), passive ? 5 : 0);
        const QLabel *label = Session::Label("warningLabel");
        QCOMPARE(label->isVisible() ? label->text() : QString(), warning);
    });
}

void TestMessages::Help_data()
{
    QTest::addColumn<int>("screen");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("version");
    const QString help = u"Preboot authentication help"_qs;
    QTest::newRow("login page") << 0 << "pwd_lgn.txt" << help << u"One\nTwo \u00E9"_qs << true;
    QTest::newRow("empty file") << 0 << "pwd_lgn.txt" << help << u""_qs << true;
    QTest::newRow("no-users page") << 10 << "pwd_rcv.txt" << help << u"Reset"_qs << true;
    QTest::newRow("no-tokens page") << 6 << "tkn_lgn.txt" << help << u"Token"_qs << true;
    QTest::newRow("keyboard test") << 11 << "pwd_lgn.txt" << u"No help for this screen"_qs
                                   << u"This screen does not have a special help message."_qs << true;
    QTest::newRow("missing file")
        << 0 << "pwd_rcv.txt" << u"Error reading help from disk"_qs
        << u"Authentication agent internal error. Cannot read help file \"\\pba\\help\\pwd_lgn.txt\"."_qs
        << false;
}

void TestMessages::Help()
{
    QFETCH(int, screen);
    QFETCH(QString, file);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(bool, version);
    Session session;
    session.options = screen == 0 ? 1 : screen == 6 ? 4 : 0;
    session.showInitialScreen = screen != 11;
    if (screen == 11) {
        fake_pbe::WriteFile(pba::kArgumentsPath, "test-mode=1");
        session.host.actions["Init"] = [&] { session.host.view->ShowTestBootMessage(); };
    }
    QVERIFY(WriteTextToFile(u"\\pba\\help\\"_qs + file, text));
    session.Play([&] {
        QTRY_COMPARE(Session::Screen(), screen);
        Boxes boxes({u"button3"_qs});
        Session::Click("helpButton");
        QCOMPARE(boxes.seen.size(), 1);
        QCOMPARE(boxes.seen[0].title, title);
        QCOMPARE(boxes.seen[0].text, text);
        QCOMPARE(boxes.seen[0].version, version);
        QCOMPARE(boxes.seen[0].errorTitle, !version);
    });
}

void TestMessages::TextsAreLoggedAsTheyAre()
{
    Session session;
    session.Play([&] {
        Boxes boxes({u"button3"_qs});
        session.host.view->GetLoginByPasswordView()->ShowMessage(u"T\u00E9", u"m %1", 2, 0);
        QVERIFY(fake_pbe::LogText().contains(
            "Title: T\xC3\xA9, message: m %1, severity: 2, type: 0, showVersion: 0\r\n"));
    });
}

PBA_REGISTER_TEST(TestMessages);
#include "tst_messages.moc"
