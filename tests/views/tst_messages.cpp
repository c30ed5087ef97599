// SPDX-License-Identifier: Apache-2.0
// Messages, the confirmation of a recovery, the warning of debug logging, help.
#include "module/settings/paths.h"
#include "module/settings/text_file.h"
#include "tests/support/test_main.h"
#include "tests/views/session.h"

class TestMessages : public QObject
{
    Q_OBJECT

private slots:
    // A message inside a login: recovery follows when the login has returned, or a confirmation of it.
    void Message()
    {
        const struct
        {
            const char *name;
            quint32 severity, type;
            QStringList answers;
            int recoveries;
        } rows[] = {{"information", 0, 0, {u"button3"_qs}, 0},
                    {"error, closed by Escape", 2, 0, {u"Escape"_qs}, 0},
                    {"unknown severity and type", 77, 77, {u"button3"_qs}, 0},
                    {"recovery offered, declined", 1, 1, {u"button3"_qs}, 0},
                    {"recovery offered, closed", 1, 1, {u"Escape"_qs}, 0},
                    {"recovery accepted", 1, 1, {u"button1"_qs, u"button3"_qs}, 1},
                    {"recovery accepted, then cancelled", 1, 1, {u"button1"_qs, u"button2"_qs}, 0},
                    {"recovery accepted, then closed", 1, 1, {u"button1"_qs, u"Escape"_qs}, 0},
                    {"recovery forced, CONTINUE", 1, 2, {u"button3"_qs}, 1},
                    {"recovery forced, closed", 1, 2, {u"Escape"_qs}, 1}};
        for (const auto &row : rows) {
            Session session(row.name);
            session.host.actions["Login"] = [&] {
                session.host.passwordView->ShowMessage(u"T\u00E9 %1", u"Two\nlines", row.severity, row.type);
                QCOMPARE(session.host.Count("StartPasswordRecovery"), 0);
            };
            session.Play([&] {
                Boxes boxes(row.answers);
                Session::LogIn();
                const Box &box = boxes.seen.first();
                QCOMPARE(box.title + u'|' + box.text, u"T\u00E9 %1|Two\nlines");
                const bool plain = row.type != 1 && row.type != 2;
                QCOMPARE(box.buttons,
                         plain ? u"button3=CONTINUE" : u"button1=Forgot your password?,button3=CONTINUE");
                QCOMPARE(box.errorTitle, row.severity == 2);
                QVERIFY(box.version.isEmpty());
                QCOMPARE(boxes.seen.size(), row.answers.size());
                QVERIFY(row.answers.size() == 1 ||
                        boxes.seen[1].buttons == u"button2=CANCEL,button3=CONTINUE");
                QCOMPARE(session.host.Count("StartPasswordRecovery"), row.recoveries);
            });
            QVERIFY(fake_pbe::LogText().contains("Title: T\xC3\xA9 %1, message: Two\nlines, severity: "));
        }
    }

    // The keys belong to the one in front, and tokens are looked at when the last is gone.
    void MessageOverHelp()
    {
        Session session;
        session.options = 5;
        session.Play([&] {
            QTRY_VERIFY(Session::Dialog()->isActiveWindow() && !QGuiApplication::overrideCursor());
            session.host.calls.clear();
            Boxes help({u"Escape"_qs});
            help.whileStanding = [&] {
                const Boxes message({u"Escape"_qs});
                session.host.passwordView->ShowMessage(u"t", u"m", 0, 0);
                QTRY_VERIFY(QApplication::activeModalWidget()->isActiveWindow());
            };
            Session::Click("helpButton");
            QTRY_COMPARE(session.host.calls, QList<QByteArray>{"UpdateConnectedTokens"});
        });
    }

    void LoggingWarning()
    {
        for (const quint32 severity : {799u, 800u, 1000u}) {
            Session session(QByteArray::number(severity));
            fake_pbe::Now().severity = severity;
            session.Play([&] {
                const QLabel *label = Session::Label("warningLabel");
                QCOMPARE(label->isVisible(), severity >= 800);
                const QString kind = severity < 1000 ? u"\nDebug "_qs : u"\nVerbose debug "_qs;
                QVERIFY(!label->isVisible() || label->text().contains(kind));
                session.host.view->ShowStartingOsScreen();
                QCOMPARE(label->isVisible(), severity == 1000);
            });
        }
    }

    void Help()
    {
        const struct
        {
            int screen;
            quint32 options;
            const char *file, *text, *version;
        } rows[] = {
            {0, 1, "pwd_lgn", "One\nTwo", "3.0.1.92"},
            {10, 0, "pwd_rcv", "Reset", "3.0.1.92"},
            {6, 4, "tkn_lgn", "Token", "3.0.1.92"},
            {11, 1, "pwd_lgn", "This screen does not have a special help message.", "3.0.1.92"},
            {0, 1, "pwd_rcv",
             "Authentication agent internal error. Cannot read help file \"\\pba\\help\\pwd_lgn.txt\".", ""}};
        for (const auto &row : rows) {
            Session session(row.text);
            session.options = row.options;
            if (row.screen == 11) {
                fake_pbe::WriteFile(pba::kArgumentsPath, "test-mode=1");
                session.request = [&] { session.host.view->ShowTestBootMessage(); };
            }
            QVERIFY(WriteTextToFile(u"\\pba\\help\\%1.txt"_qs.arg(QLatin1String(row.file)),
                                    QString::fromLatin1(row.text)));
            session.Play([&] {
                QCOMPARE(Session::Screen(), row.screen);
                Boxes boxes({u"button3"_qs});
                Session::Click("helpButton");
                QCOMPARE(boxes.seen.size(), 1);
                QCOMPARE(boxes.seen[0].text, QString::fromLatin1(row.text));
                QCOMPARE(boxes.seen[0].version, QString::fromLatin1(row.version));
                QCOMPARE(boxes.seen[0].errorTitle, row.version[0] == 0);
            });
        }
    }
};

PBA_REGISTER_TEST(TestMessages);
#include "tst_messages.moc"
