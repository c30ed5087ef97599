// SPDX-License-Identifier: Apache-2.0
// The reset of a password: what counts as entropy, the walk through the steps, its confirmations, and a host
// that fails.
#include <QFormLayout>
#include <QProgressBar>

#include "tests/support/test_main.h"
#include "module/views/entropy_sampler.h"
#include "tests/views/session.h"
#include "module/widgets/response_input.h"

// A session whose recovery begins with the entropy page.
struct RecoverySession : Session
{
    explicit RecoverySession(const QByteArray &row, quint32 amount)
        : Session(row)
    {
        options = 0;
        host.actions["StartPasswordRecovery"] = [=, this] {
            host.recoveryView->StartEntropyCollection(amount);
        };
    }
    static void Begin()
    {
        Boxes boxes({u"button3"_qs});
        Click("temporaryPasswordRecoveryButton2");
    }
};

static QString Challenge()
{
    const auto *rows = Session::Dialog()->findChild<QFormLayout *>(u"challengeFormLayout"_qs);
    QStringList texts;
    for (int i = 0; i < rows->count(); ++i)
        texts << static_cast<QLabel *>(rows->itemAt(i)->widget())->text();
    return texts.join(u'|');
}

// The lines: what stands in each, behind it the status; then the outcome.
static QString Response()
{
    const auto *input = Session::Find<ResponseInput>("responseInput");
    QStringList texts;
    for (int i = 0; i < input->layout()->count(); i += 3) {
        const auto *line = static_cast<QLineEdit *>(input->layout()->itemAt(i + 1)->widget());
        const auto *status = static_cast<QLabel *>(input->layout()->itemAt(i + 2)->widget());
        texts << line->text() + (line->isEnabled() ? u" "_qs : u" - "_qs) + status->text();
    }
    return texts.join(u'|') + u'|' + Session::Label("responseResultMessage")->text().section(u'.', 0, 0);
}

// A key and a click that the window system has kept, for nobody looked.
static void PostWaitingInput()
{
    const QPushButton *button = Session::Find("restartRecoveryButton");
    const QPoint place = button->mapTo(Session::Dialog(), button->rect().center());
    for (const auto &[key, click] : {std::pair(QEvent::KeyPress, QEvent::MouseButtonPress),
                                     std::pair(QEvent::KeyRelease, QEvent::MouseButtonRelease)}) {
        QWindow *window = Session::Dialog()->windowHandle();
        QCoreApplication::postEvent(window, new QKeyEvent(key, Qt::Key_Space, Qt::NoModifier, u" "_qs));
        QCoreApplication::postEvent(
            window, new QMouseEvent(click, place, place, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
}

class TestRecovery : public QObject
{
    Q_OBJECT

private slots:
    void Samples()
    {
        pba::EntropySampler sampler;
        const struct
        {
            int key;
            quint64 counter;
            int byte;
        } rows[] = {{'A', 1, 0x41},  {'A', 2, -1}, {'B', 4, 0xC2}, {'A', 8, 0x01}, {Qt::Key_Return, 10, 0x84},
                    {'B', 11, 0x42}, {0, 12, 0x40}};
        for (const auto &row : rows)
            QCOMPARE(sampler.SampleKey(row.key, row.counter),
                     row.byte < 0 ? std::nullopt : std::optional(static_cast<quint8>(row.byte)));

        QVERIFY(!sampler.SampleMove({0, 0}, 0));
        int last = 0;
        for (int move = 1, x = 1; move <= 2000; ++move, ++x) {
            const auto byte = sampler.SampleMove({x, 0x35}, 0x1FF);
            QVERIFY(!byte || *byte == static_cast<quint8>((x * 16 | 5) ^ 0xFF));
            const int interval = move - last;
            QVERIFY(interval <= 15 && (!byte || interval >= 5) && (last > 0 || !byte == (move < 10)));
            if (byte)
                last = move;
            QVERIFY(!byte || !sampler.SampleMove({x, 0x35}, 0));
        }
    }

    // With keys alone. None of those that are pressed at random presses a button, however long the host
    // works, and none is logged.
    void Walk()
    {
        RecoverySession session("", 5);
        RecordingHost &host = session.host;
        host.actions["SetEntropy"] = [&] {
            kro::vector_t<kro::string_t> strings;
            strings.PushBack(" AB\tCD<b>efg");
            strings.PushBack("");
            host.recoveryView->ShowChallenge(strings);
            QTest::qSleep(600);
            PostWaitingInput();
        };
        host.actions["GotoChangePassword"] = [&] { host.passwordView->ShowChangePassword(u"", u"", true); };
        session.Play([&] {
            RecoverySession::Begin();
            QCOMPARE(Session::Screen(), 2);
            QTRY_COMPARE(Session::FocusName(), u"pageCollectEntropy");
            QVERIFY(Session::Find("restartRecoveryButton")->isVisible());
            QVERIFY(!Session::Find("quitRecoveryButton")->isVisible());
            const auto *progress = Session::Find<QProgressBar>("progressBar");
            Session::Type(u"aa "_qs);
            QCOMPARE(progress->value(), 2);
            QCOMPARE(progress->maximum(), 5);
            // A confirmation that was declined leaves the keys to the page.
            Boxes boxes({u"button2"_qs, u"button2"_qs});
            Session::Click("restartRecoveryButton");
            Session::Press(Qt::Key_Escape);
            QTest::keyPress(Session::Dialog()->focusWidget(), Qt::Key_B);
            QCOMPARE(progress->value(), 4);
            Session::Press(Qt::Key_Return);
            QTest::qWait(1);
            for (const Qt::Key hammered : {Qt::Key_Space, Qt::Key_Space, Qt::Key_Return})
                QTest::keyClick(Session::Find("continueToResponceButton"), hammered);
            QCOMPARE(Session::Screen(), 3);
            QCOMPARE(host.entropy.size(), 5);
            QCOMPARE(boxes.seen.size(), 1);

            QCOMPARE(Challenge(), u"String 1:|ABCD <b>e fg|String 2:|");
            QTRY_COMPARE(Session::FocusName(), u"continueToResponceButton");
            QTest::qWait(600);
            Session::Press(Qt::Key_Return);
            QCOMPARE(Session::Screen(), 4);

            QCOMPARE(Response(), u".... |");
            QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
            host.results["CheckResponseLine"] = kro::kFalse;
            Session::Type(u"-abcd 12345678ijklM"_qs);
            QCOMPARE(Response(), u"ABCD.1234.5678.IJKL.M Rejected|Response line is rejected");
            Session::Press(Qt::Key_Backspace);
            QCOMPARE(Response(), u"ABCD.1234.5678.IJKL. |");
            // What the mask refuses is no new line; what takes the place of a character is.
            Session::Type(u"m-"_qs);
            host.results["CheckResponseLine"] = kro::kUnexpected;
            host.responseValid = true;
            Session::Press(Qt::Key_Left);
            Session::Type(u"n"_qs);
            QCOMPARE(Response(), u"ABCD.1234.5678.IJKL.N - Accepted|.... |");
            const QByteArray refused = "CheckResponseLine(ABCD12345678IJKLM)";
            QCOMPARE(host.calls.mid(host.calls.size() - 5),
                     (QList<QByteArray>{"SetEntropy", refused, refused,
                                        "CheckResponseLine(ABCD12345678IJKLN)", "CheckResponse(1)"}));
            host.responseValid = false;
            Session::Type(u"abcd12345678ijklm"_qs);
            QCOMPARE(Response(), u"ABCD.1234.5678.IJKL.N - Rejected|ABCD.1234.5678.IJKL.M - Rejected|"
                                 "Response is rejected");
            Session::Press(Qt::Key_Return);
            QCOMPARE(Response(), u".... |");
            QVERIFY(!Session::Find("continueToChangePasswordButton")->isVisible());
            host.responseValid = host.responseComplete = true;
            QTRY_VERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
            Session::Type(u"B"_qs.repeated(17));
            QCOMPARE(Response(), u"BBBB.BBBB.BBBB.BBBB.B - Accepted|Response is accepted");
            QCOMPARE(host.calls.last(), "CheckResponse(1)");
            Session::Press(Qt::Key_Return);
            QCOMPARE(Session::Screen(), 1);
            QVERIFY(!fake_pbe::LogText().contains("BBBB") && !fake_pbe::LogText().contains("key:"));
        });
    }

    // Each once, whichever widgets it passes on its way up. Keys that waited are dropped behind them too.
    void MovesOfThePointer()
    {
        RecoverySession session("", 1);
        session.host.actions["SetEntropy"] = [&] {
            session.host.recoveryView->ShowChallenge({});
            PostWaitingInput();
        };
        session.Play([&] {
            RecoverySession::Begin();
            QVERIFY(!QCoreApplication::testAttribute(Qt::AA_CompressHighFrequencyEvents));
            QWindow *window = Session::Dialog()->windowHandle();
            const QPoint place = Session::Label("gatherEntropyMessage")->mapTo(Session::Dialog(), QPoint());
            QTest::mousePress(window, Qt::LeftButton, {}, place);
            for (int move = 1; move <= 10; ++move) {
                QVERIFY(session.host.entropy.isEmpty());
                QTest::mouseMove(window, place + QPoint(move, 0));
            }
            QTRY_COMPARE(session.host.entropy.size(), 1);
            QTest::qWait(1);
            QCOMPARE(Session::Screen(), 3);
        });
    }

    // Whatever closes them confirms, but for CANCEL; a host that fails holds nobody back from leaving.
    void Confirmations()
    {
        for (const auto &[button, call, label] :
             {std::tuple("quitRecoveryButton", "QuitRecovery", "QUIT"),
              std::tuple("restartRecoveryButton", "RestartRecovery", "RESTART")}) {
            RecoverySession session(button, 3);
            RecordingHost &host = session.host;
            host.recoveryInProgress = true;
            host.results["QuitRecovery"] = kro::kUnexpected;
            host.actions[call] = [&host] { host.recoveryView->StartResponceInput(); };
            session.Play([&host, button = button, call = call, label = label] {
                RecoverySession::Begin();
                int calls = 0;
                for (const QString &answer : {u"button2"_qs, u"button3"_qs, u"Escape"_qs}) {
                    Boxes boxes({answer});
                    Session::Click(button);
                    QCOMPARE(boxes.seen.size(), 1);
                    QCOMPARE(boxes.seen[0].buttons, u"button2=CANCEL,button3="_qs + QLatin1String(label));
                    calls += answer != u"button2";
                    QCOMPARE(host.Count(call), calls);
                    QCOMPARE(Session::Screen(), calls > 0 ? 4 : 2);
                }
                // Another page, shown while the host is asked about this one, keeps what is its own.
                host.actions["IsRecoveryInProgress"] = [&host] { host.view->ShowStartingOsScreen(); };
                Boxes boxes({u"Escape"_qs});
                Session::Click(button);
                QCOMPARE(Session::Screen(), 9);
                QVERIFY(!Session::Find(button)->isVisible());
            });
        }
    }

    void Failures()
    {
        const struct
        {
            const char *call;
            quint32 amount;
            int screen;
            const char16_t *report;
        } rows[] = {{"no memory", 0xFFFFFFFF, 10, u"StartEntropyCollectionInternal 80000041"},
                    {"no bytes", 0, 2, u""},
                    {"SetEntropy", 1, 2, u"EntropyCollected 80000040"},
                    {"RestartRecovery", 9, 2, u"OnRestartPasswordRecovery 80000040"}};
        for (const auto &row : rows) {
            RecoverySession session(row.call, row.amount);
            session.host.results[row.call] = kro::kUnexpected;
            session.host.actions[row.call] = [&] { session.host.view->ShowTestBootMessage(); };
            session.Play([&] {
                const bool restart = row.amount == 9;
                Boxes boxes({u"button3"_qs, restart ? u"button3"_qs : u"Escape"_qs, u"Escape"_qs});
                // A key that closes a report comes behind a pause.
                boxes.whileStanding = [] { QTest::qWait(600); };
                Session::Click("temporaryPasswordRecoveryButton2");
                Session::Type(u"x"_qs);
                if (restart)
                    Session::Click("restartRecoveryButton");
                QCOMPARE(session.host.Count("SetEntropy"), row.amount <= 1 ? 1 : 0);
                QCOMPARE(session.host.entropy.size(), row.amount == 1 ? 1 : 0);
                QCOMPARE(Session::Screen(), row.screen);
                const QString text = boxes.seen.last().text;
                const QString report = text.section(u"::"_qs, -1).section(u'\n', 0, 0) + u' ' +
                                       text.section(u"res: "_qs, -1).section(u'(', 0, 0);
                QCOMPARE(*row.report ? report : QString(), QString::fromUtf16(row.report));
            });
        }
    }
};

PBA_REGISTER_TEST(TestRecovery);
#include "tst_recovery.moc"
