// Messages, the confirmation of a recovery, the warning of debug logging, help.
#include "settings/paths.h"
#include "settings/text_file.h"
#include "test_main.h"
#include "views/session.h"

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

    void LoggingWarning()
    {
        const QString warning =
            u"WARNING!\n%1 logging is enabled.\nYour private data can be saved to log file."_qs;
        const std::pair<quint32, QString> rows[] = {
            {799, {}}, {800, u"Debug"_qs}, {999, u"Debug"_qs}, {1000, u"Verbose debug"_qs}};
        for (const auto &row : rows) {
            Session session(QByteArray::number(row.first));
            fake_pbe::SetSeverity(row.first);
            session.Play([&] {
                const QLabel *label = Session::Label("warningLabel");
                QCOMPARE(label->isVisible() ? label->text() : QString(),
                         row.second.isEmpty() ? QString() : warning.arg(row.second));
                session.host.view->ShowStartingOsScreen();
                QCOMPARE(label->isVisible(), row.first == 1000);
            });
        }
    }

    void Help()
    {
        const QString help = u"Preboot authentication help"_qs;
        const struct
        {
            const char *name;
            int screen;
            QString file, text, title;
            bool failure;
        } rows[] = {{"login page", 0, u"pwd_lgn"_qs, u"One\nTwo \u00E9"_qs, help, false},
                    {"empty file", 0, u"pwd_lgn"_qs, u""_qs, help, false},
                    {"no-users page", 10, u"pwd_rcv"_qs, u"Reset"_qs, help, false},
                    {"no-tokens page", 6, u"tkn_lgn"_qs, u"Token"_qs, help, false},
                    {"keyboard test", 11, u"pwd_lgn"_qs,
                     u"This screen does not have a special help message."_qs, u"No help for this screen"_qs,
                     false},
                    {"missing file", 0, u"pwd_rcv"_qs,
                     u"Authentication agent internal error. Cannot read help file "
                     "\"\\pba\\help\\pwd_lgn.txt\"."_qs,
                     u"Error reading help from disk"_qs, true}};
        for (const auto &row : rows) {
            Session session(row.name);
            session.options = row.screen == 6 ? 4 : row.screen == 10 ? 0 : 1;
            if (row.screen == 11) {
                fake_pbe::WriteFile(pba::kArgumentsPath, "test-mode=1");
                session.request = [&] { session.host.view->ShowTestBootMessage(); };
            }
            QVERIFY(WriteTextToFile(u"\\pba\\help\\%1.txt"_qs.arg(row.file), row.text));
            session.Play([&] {
                QCOMPARE(Session::Screen(), row.screen);
                Boxes boxes({u"button3"_qs});
                Session::Click("helpButton");
                QCOMPARE(boxes.seen.size(), 1);
                QCOMPARE(boxes.seen[0].title, row.title);
                QCOMPARE(boxes.seen[0].text, row.text);
                QCOMPARE(boxes.seen[0].version, row.failure ? u"" : u"3.0.1.92");
                QCOMPARE(boxes.seen[0].errorTitle, row.failure);
            });
        }
    }
};

PBA_REGISTER_TEST(TestMessages);
#include "tst_messages.moc"
