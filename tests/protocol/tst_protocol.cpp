// SPDX-License-Identifier: Apache-2.0
// Both ends of the protocol, over memory and over sockets, and what a hostile other side may send.
#include <csignal>

#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "host/protocol/client.h"
#include "host/protocol/server.h"
#include "host/protocol/socket_channel.h"
#include "tests/support/memory_channel.h"
#include "tests/support/test_main.h"

using namespace protocol;
using namespace std::chrono_literals;

namespace {

Secret MakeSecret(std::string_view text)
{
    Secret secret(text.size() + 1);
    for (const char byte : text)
        secret.Append(byte);
    return secret;
}

std::string Bytes(const auto &message)
{
    return std::string(Encode(message).value().View());
}

TryPassword Login(std::string domain, std::string user, std::string_view password)
{
    return {std::move(domain), std::move(user), MakeSecret(password)};
}

// Client and server in one thread: while the client would wait, `serve` is called.
struct Session
{
    explicit Session(std::function<void(Server &)> serve)
        : Session(MemoryChannel::MakePair(), std::move(serve))
    {
    }
    Session(std::pair<std::unique_ptr<MemoryChannel>, std::unique_ptr<MemoryChannel>> ends,
            std::function<void(Server &)> serve)
        : clientEnd(*ends.first)
        , serverEnd(*ends.second)
        , client(std::move(ends.first))
        , server(std::move(ends.second))
    {
        clientEnd.others = [this, serve] { serve(server); };
    }

    MemoryChannel &clientEnd;
    MemoryChannel &serverEnd;
    Client client;
    Server server;
};

// A socket whose other end is in the hands of the test.
struct RawSocket
{
    RawSocket() { std::tie(raw, other) = SocketChannel::MakeSockets(); }
    ~RawSocket() { close(raw); }
    void Send(const std::string &bytes) const
    {
        QCOMPARE(send(raw, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
    }
    void SendWithDescriptor(std::string bytes) const
    {
        iovec part{bytes.data(), bytes.size()};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        *CMSG_FIRSTHDR(&message) = {CMSG_LEN(sizeof(int)), SOL_SOCKET, SCM_RIGHTS};
        *reinterpret_cast<int *>(CMSG_DATA(CMSG_FIRSTHDR(&message))) = raw;
        QVERIFY(sendmsg(raw, &message, 0) > 0);
    }

    int raw = -1;
    int other = -1; // for a SocketChannel, which closes it
};

} // namespace

class ProtocolTest : public QObject
{
    Q_OBJECT

private slots:
    // Every byte that is missing, changed to something out of range, or too many.
    void decoderRefuses()
    {
        const std::string login = Bytes(Login("", "\u00e4", std::string_view("a\0b", 3)));
        const std::string tokens = Bytes(Tokens{7, {{"Card", "01", true, false}}});
        TryPasswordReply waiting;
        waiting.result = LoginResult::Wait;
        waiting.secondsToWait = 0x01020304;
        const std::string reply = Bytes(waiting);
        QVERIFY(DecodeAny<Request>(login) && DecodeAny<Event>(tokens));
        QCOMPARE(std::get<TryPassword>(*DecodeAny<Request>(login)).password.Size(), 3u);
        QCOMPARE(std::get<Tokens>(*DecodeAny<Event>(tokens)).tokens[0].serial, std::string("01"));
        QCOMPARE(Decode<TryPasswordReply>(reply)->secondsToWait, waiting.secondsToWait);
        for (const std::string &packet : {login, tokens, reply}) {
            for (std::size_t size = 0; size < packet.size(); ++size)
                QVERIFY(!Accepts(packet.substr(0, size)));
            QVERIFY(Accepts(packet) && !Accepts(packet + '\0'));
        }
        const std::tuple<std::string, std::size_t, char> rows[] = {
            {login, 0, kVersion + 1},
            {login, 1, 0x7F},
            {login, 1, '\x82'},
            {login, 3, 1},
            {login, 6, '\0'},
            {login, 6, '\xC0'},
            {login, 7, 'x'},
            {login, 8, 4},
            {login, 9, 1},
            {login, 10, '\xFF'},
            {reply, 2, 4},
            {reply, 7, static_cast<char>(VolumeError::Last) + 1},
            {reply, 8, 2},
            {tokens, 6, 0},
            {tokens, 6, 2},
            {tokens, 6, 17},
            {tokens, 17, 2},
        };
        for (auto [packet, place, byte] : rows) {
            packet[place] = byte;
            QVERIFY2(!Accepts(packet), qPrintable(QString::number(place)));
        }
    }

    void encoderRefuses()
    {
        QVERIFY(Encode(
            Login(std::string(kMaxName, 'd'), std::string(kMaxName, 'u'), std::string(kMaxTyped, 'p'))));
        QVERIFY(!Encode(Login("", std::string(kMaxName + 1, 'u'), "")));
        QVERIFY(!Encode(Login("", std::string("a\0b", 3), "")));
        QVERIFY(!Encode(Login("", "anna", std::string(kMaxTyped + 1, 'p'))));
        QVERIFY(!Encode(Login("", "anna", "\xFF")));
        const TokenInfo longest{std::string(kMaxTokenName, 'n'), std::string(kMaxTokenSerial, 's'), true,
                                true};
        QVERIFY(Encode(Tokens{1, std::vector(kMaxTokens, longest)}));
        QVERIFY(!Encode(Tokens{1, std::vector(kMaxTokens + 1, longest)}));
    }

    // A question that cannot be sent is nobody's fault; events between question and answer are kept, the
    // newest list counts; a question inside the wait of another one is not asked.
    void asking()
    {
        Session session([](Server &server) {
            const auto request = server.Receive();
            QVERIFY(request && server.IsAnswering());
            if (std::get_if<Hello>(&*request)) {
                QVERIFY(server.Tell(Tokens{1, {{"Old", "1", true, true}}}) && server.Tell(Tokens{2, {}}));
                QVERIFY(server.Reply(HelloReply{true, false, true, false, 12}) && server.Tell(Stop{}));
            } else if (const auto *login = std::get_if<TryPassword>(&*request)) {
                QCOMPARE(login->password.View(), std::string_view("secret"));
                QVERIFY(
                    server.Reply(TryPasswordReply{LoginResult::Opened, 0, VolumeError::None, true, true}));
            }
        });
        const auto hello = session.client.Ask(Hello{});
        QVERIFY(hello && hello->passwordsOffered && !hello->tokensOffered && hello->testBoot);
        QCOMPARE(hello->leastPasswordLength, 12);
        QCOMPARE(session.client.TakeTokens()->generation, 2u);
        QVERIFY(!session.client.TakeTokens() && !session.client.StopRequested());
        QVERIFY(!session.client.Ask(Login("", "\xFF", "")));
        const auto login = session.client.Ask(Login("", "anna", "secret"));
        QVERIFY(login && login->result == LoginResult::Opened && login->mustReplace && login->hasExpired);
        QVERIFY(session.client.StopRequested() && session.client.IsOpen());
    }

    // What each side does not stand, and what it says about it.
    void outOfTurn()
    {
        const std::string hello = Bytes(Hello{});
        const std::pair<std::vector<std::string>, Fault> requests[] = {
            {{Bytes(Forget{})}, Fault::OutOfTurn},
            {{hello, Bytes(Start{})}, Fault::OutOfTurn},
            {{"\x02\x01"}, Fault::OtherVersion},
            {{hello + "x"}, Fault::BadPacket},
            {{Bytes(HelloReply{})}, Fault::BadPacket},
            {{Bytes(Stop{})}, Fault::BadPacket},
            {{std::string(kMaxPacket + 1, kVersion)}, Fault::BadPacket},
        };
        for (const auto &[packets, fault] : requests) {
            Session session([](Server &) {});
            for (const std::string &packet : packets)
                QVERIFY(session.clientEnd.Send(packet));
            while (session.server.Receive() && session.server.IsOpen())
                continue;
            QCOMPARE(session.server.WhyClosed(), fault);
            QVERIFY(!session.client.TakeEvents() && !session.server.Reply(HelloReply{}));
            QCOMPARE(session.client.WhyClosed(), Fault::Gone);
        }
        const std::pair<std::string, Fault> answers[] = {
            {Bytes(StartReply{}), Fault::OutOfTurn},
            {hello, Fault::OutOfTurn},
            {Bytes(HelloReply{}) + "x", Fault::BadPacket},
            {Bytes(Stop{}) + "x", Fault::BadPacket},
            {"", Fault::TimedOut},
        };
        for (const auto &[packet, fault] : answers) {
            Session session([](Server &) {});
            session.clientEnd.others = [&session, bytes = packet] {
                if (!bytes.empty())
                    QVERIFY(session.serverEnd.Send(bytes));
            };
            QVERIFY(!session.client.Ask(Hello{}, 1ms));
            QCOMPARE(session.client.WhyClosed(), fault);
            // Before the question it is no answer.
            Session early([](Server &) {});
            QVERIFY(packet.empty() || early.serverEnd.Send(packet));
            QVERIFY(packet.empty() || !early.client.TakeEvents());
        }
        Session wrongReply([](Server &server) { QVERIFY(server.Receive() && !server.Reply(StartReply{})); });
        QVERIFY(!wrongReply.client.Ask(Hello{}));
    }

    void waiting()
    {
        Client *nested = nullptr;
        int waits = 0;
        bool nestedAnswered = false;
        auto [near, far] = MemoryChannel::MakePair();
        Server server(std::move(far));
        Client client(std::move(near), [&](int) {
            nestedAnswered |= nested->Ask(Hello{}).has_value();
            if (++waits == 2 && server.Receive())
                server.Reply(HelloReply{});
            return waits < 3;
        });
        nested = &client;
        QVERIFY(client.Ask(Hello{}) && !nestedAnswered);
        QCOMPARE(waits, 2);
        QVERIFY(!client.Ask(Hello{}));
        QCOMPARE(client.WhyClosed(), Fault::TimedOut);
    }

    void sockets()
    {
        const std::string hello = Bytes(Hello{});
        Secret packet(kMaxPacket);
        RawSocket socket;
        QVERIFY(SocketChannel::IsUsable(socket.other) && !SocketChannel::IsUsable(STDIN_FILENO));
        SocketChannel channel(socket.other);
        QCOMPARE(channel.Receive(&packet, 1ms), Received::Nothing);
        socket.Send(hello);
        QCOMPARE(channel.Receive(&packet, {}), Received::Packet);
        QCOMPARE(packet.View(), std::string_view(hello));
        socket.Send(std::string(kMaxPacket + 1, 'x'));
        QCOMPARE(channel.Receive(&packet, {}), Received::Bad);
        const int lowest = dup(0);
        close(lowest);
        socket.SendWithDescriptor(hello);
        QCOMPARE(channel.Receive(&packet, {}), Received::Bad);
        const int stillLowest = dup(0);
        close(stillLowest);
        QCOMPARE(stillLowest, lowest); // no descriptor has come in
        int sent = 0;
        while (channel.Send(hello))
            QVERIFY2(++sent < 1000000, "a side that reads nothing is waited for");
        close(std::exchange(socket.raw, -1));
        QCOMPARE(channel.Receive(&packet, {}), Received::Gone);
        QVERIFY(!channel.Send(hello)); // and no SIGPIPE
        channel.Close();
        QCOMPARE(channel.Receive(&packet, {}), Received::Gone);
    }

    // Signals while waiting are no answer and no end: the third one brings the packet.
    void signalsWhileWaiting()
    {
        static int s_raw, s_signals;
        RawSocket socket;
        s_raw = socket.raw;
        struct sigaction action = {};
        action.sa_handler = [](int) {
            if (++s_signals == 3)
                static_cast<void>(send(s_raw, "\1\1", 2, MSG_DONTWAIT));
        };
        sigaction(SIGALRM, &action, nullptr);
        const itimerval often{{0, 2000}, {0, 2000}};
        const itimerval never{};
        setitimer(ITIMER_REAL, &often, nullptr);
        SocketChannel channel(socket.other);
        Secret packet(kMaxPacket);
        const Received received = channel.Receive(&packet, {});
        setitimer(ITIMER_REAL, &never, nullptr);
        QCOMPARE(received, Received::Packet);
    }

private:
    static bool Accepts(const std::string &packet)
    {
        return DecodeAny<Request>(packet) || DecodeAny<Event>(packet) || Decode<TryPasswordReply>(packet);
    }
};

PBA_REGISTER_TEST(ProtocolTest);
#include "tst_protocol.moc"
