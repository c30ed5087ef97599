// SPDX-License-Identifier: Apache-2.0
// pba_text on a terminal of its own, with a service that follows a script.
#include "base/code_string.h"
#include "host/protocol/server.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/exit_codes.h"
#include "tests/support/run_program.h"
#include "tests/support/screen_root.h"
#include "tests/support/terminal_program.h"
#include "tests/support/test_main.h"

using namespace protocol;

namespace {

// Somebody at a serial line, and the service at the other end.
class Line : public TerminalProgram
{
public:
    explicit Line(const QByteArray &root)
        : Line(root, SocketChannel::MakeSockets())
    {
    }

    Server server;

    template <typename Wanted>
    Wanted Serve(const typename Wanted::Reply &reply)
    {
        auto request = server.Receive(std::chrono::minutes(1));
        if (!request || !std::holds_alternative<Wanted>(*request) || !server.Reply(reply))
            qFatal("not the request that was expected: %s", Describe(server.WhyClosed()));
        return std::get<Wanted>(std::move(*request));
    }

private:
    // The copy is not close-on-exec.
    Line(const QByteArray &root, std::pair<int, int> ends)
        : Line(root, ends, dup(ends.second))
    {
    }
    Line(const QByteArray &root, std::pair<int, int> ends, int channel)
        : TerminalProgram(QByteArrayList{PBA_TEXT, "--channel", QByteArray::number(channel), "--root", root} +
                          ScreenUser())
        , server(std::make_unique<SocketChannel>(ends.first))
    {
        close(channel);
        close(ends.second);
    }
};

TryPasswordReply LoginReply(LoginResult result, std::uint32_t seconds = 0, bool mustReplace = false)
{
    return {result, seconds, VolumeError::None, mustReplace, mustReplace};
}

QByteArray ResponseLine(int row)
{
    base::CodeWriter writer(16);
    for (int i = 0; i < 16; ++i)
        writer.Put(row + i, 5);
    const base::Secret line = writer.Row(0, 16, base::kFirstResponseRow + row);
    return {line.Data(), static_cast<qsizetype>(line.Size())};
}

} // namespace

class TextTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_root.emplace();
        // Not a link: the build may lie where nobody gets in.
        QCOMPARE(Run("cp", {"-r", PBA_TEXTS "/de", m_root->filePath("pba")}).exitCode, 0);
    }

    // Wrong, to wait, expired, unequal, too short, replaced: in the language of the root, and no password on
    // the line.
    void login()
    {
        Line line(m_root->path().toUtf8());
        line.Serve<Hello>({true, false, false, false, 8});
        line.Answer("Benutzername", "");
        line.Answer("Benutzername", "j\u00f6rg");
        line.Answer("Dom\u00e4ne", "OFFICE");
        line.Answer("Kennwort: ", "wrong one");
        const auto tried = line.Serve<TryPassword>(LoginReply(LoginResult::Wrong));
        QCOMPARE(tried.user, std::string("j\u00f6rg"));
        QCOMPARE(tried.domain, std::string("OFFICE"));
        QCOMPARE(tried.password.View(), std::string_view("wrong one"));
        line.Answer("ist falsch", "");
        line.Answer("Benutzername", "anna");
        line.Answer("Dom\u00e4ne", "");
        line.Answer("Kennwort: ", "wrong two");
        line.Serve<TryPassword>(LoginReply(LoginResult::Wait, 1));
        line.Expect("1.");
        line.Answer("Benutzername", "anna");
        line.Answer("Dom\u00e4ne", "");
        line.Answer("Kennwort: ", "wrong three");
        line.Serve<TryPassword>(LoginReply(LoginResult::Opened, 0, true));
        line.Expect("abgelaufen");
        for (const auto &[first, second] : {std::pair("wrong four", "wrong five"), {"wrong", "wrong"}}) {
            line.Answer("Neues Kennwort: ", first);
            line.Answer("noch einmal: ", second);
        }
        line.Serve<ReplacePassword>({VolumeError::PasswordTooShort, true});
        line.Answer("Neues Kennwort: ", "wrong enough");
        line.Answer("noch einmal: ", "wrong enough");
        QCOMPARE(line.Serve<ReplacePassword>({VolumeError::None, true}).password.View(),
                 std::string_view("wrong enough"));
        line.Serve<Start>({StartResult::Started});
        line.Expect("startet");
        QCOMPARE(line.End(), 0);
        QVERIFY2(!line.seen.contains("wrong"), line.seen);
    }

    void recovery()
    {
        Line line("/nowhere");
        line.Serve<Hello>({true, false, false, false, 8});
        line.Answer("User name", "?");
        line.Serve<RecoveryBegin>({RecoveryOffer::Ready, 32});
        QCOMPARE(line.Serve<RecoveryEntropy>({{{"21X3FJY1884KS2VN"}}}).bytes.Size(), 32u);
        line.Expect("21X3 FJY1 884K S2VN");
        line.Answer("Line 1", ResponseLine(1));
        line.Expect("mistake");
        for (const auto result : {RecoveryResult::Rejected, RecoveryResult::Accepted}) {
            line.Answer("Line 1", ResponseLine(0).toLower());
            line.Answer("Line 2", ResponseLine(1).insert(4, ' '));
            const auto response = line.Serve<RecoveryFinish>({result, VolumeError::None, "", "anna"});
            QCOMPARE(response.lines[1].View(), std::string_view(ResponseLine(1)));
        }
        line.Answer("New password: ", "paper-boat");
        line.Answer("once more: ", "paper-boat");
        line.Serve<ReplacePassword>({VolumeError::NotReplaceable, false});
        line.Serve<Forget>({});
        line.Answer("User name", "?");
        line.Serve<RecoveryBegin>({RecoveryOffer::None, 0});
        line.Expect("no password recovery");
        line.Expect("User name");
    }

    // Of the service, by its wish, and of the line: in the middle of a password.
    void ends()
    {
        for (const bool tells : {false, true}) {
            Line line(m_root->path().toUtf8());
            line.Serve<Hello>({true, false, false, false, 8});
            line.Answer("Benutzername", "anna");
            line.Answer("Dom\u00e4ne", "");
            line.Expect("Kennwort: ");
            if (tells)
                QVERIFY(line.server.Tell(Stop{}));
            else
                line.server.Close();
            QCOMPARE(line.End(), tells ? host::kScreenDone : host::kScreenFailed);
        }
    }

private:
    std::optional<ScreenRoot> m_root;
};

PBA_REGISTER_TEST(TextTest);
#include "tst_text.moc"
