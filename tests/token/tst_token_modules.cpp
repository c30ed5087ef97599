// SPDX-License-Identifier: Apache-2.0
// Which modules the configuration names, and what becomes of one that goes wrong in its process.
#include <csignal>

#include <poll.h>
#include <unistd.h>

#include "host/protocol/asker.h"
#include "host/protocol/socket_channel.h"
#include "host/protocol/token_messages.h"
#include "host/service/descriptor.h"
#include "host/service/screen_process.h"
#include "host/service/tokens/module_files.h"
#include "tests/support/fake_pbe.h"
#include "tests/support/test_main.h"
#include "tests/token/soft_tokens.h"

namespace {

using Paths = std::vector<std::string>;

} // namespace

class TokenModulesTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { fake_pbe::Reset(); }

    void theConfiguration()
    {
        const std::pair<const char *, Paths> rows[] = {
            {"module: /a/b.so", {"/a/b.so"}},
            {"# module: /no.so\n\n  module :\t/a/b.so \r\nx", {"/a/b.so"}},
            {"module: /a.so\nmodule: /b.so", {"/a.so"}},
            {"module: /a.so\nenable-in: pba_host", {"/a.so"}},
            {"module: /a.so\nenable-in: x, pba_host y", {"/a.so"}},
            {"module: /a.so\nenable-in: pba_hosts,pba", {}},
            {"module: /a.so\nenable-in:", {}},
            {"module: /a.so\ndisable-in: p11-kit-proxy", {"/a.so"}},
            {"module: /a.so\ndisable-in: p11-kit-proxy,pba_host", {}},
            {"module: /a.so\nremote: |p11-kit remote /a.so", {}},
            {"module:\n", {}},
            {"", {}},
            {"\n:\n::\nmodule", {}}};
        for (const auto &[text, paths] : rows)
            QVERIFY2(host::ModulesOf({{"one", text}}) == paths, text);
        QVERIFY(fake_pbe::LogText().contains("one is not used"));
        QVERIFY(host::ModulesOf({{"one", "module: own.so"}}).at(0).ends_with("/pkcs11/own.so"));
        QVERIFY(host::ModulesOf({{"one", std::string("module: /a\0.so", 14)}}).empty());
        // What the administrator says goes before what the package says, and each module runs once.
        QVERIFY(host::ModulesOf({{"b", "disable-in: pba_host"},
                                 {"c", "module: /c.so"},
                                 {"a", "module: /c.so"},
                                 {"b", "module: /b.so"}}) == Paths{"/c.so"});
        std::vector<host::ModuleFile> many;
        for (int i = 0; i < 1000; ++i)
            many.push_back({std::to_string(i), "module: /" + std::to_string(i)});
        QCOMPARE(host::ModulesOf(many).size(), 16u);
    }

    // Without the service, which can be killed, too.
    void aModuleThatHangsEndsWithItsService()
    {
        SoftTokens tokens;
        tokens.Do("hang C_Initialize");
        const auto [ours, theirs] = protocol::SocketChannel::MakeSockets();
        protocol::Asker service(std::make_unique<protocol::SocketChannel>(ours));
        const host::ScreenCommand command{PBA_TOKEN, tokens.Arguments(), {}, false, {}};
        host::ScreenProcess process(command, theirs);
        close(theirs);
        QVERIFY(!service.Ask(protocol::ListTokens{}, std::chrono::milliseconds(300)));
        QCOMPARE(service.WhyClosed(), protocol::Fault::TimedOut);
        QCOMPARE(process.Reap().code, 0);
    }

    // Who sits at the service's place gets nothing without a login, and nobody but the service starts it.
    void outOfTurn()
    {
        SoftTokens tokens;
        const auto [ours, theirs] = protocol::SocketChannel::MakeSockets();
        protocol::Asker service(std::make_unique<protocol::SocketChannel>(ours));
        host::ScreenProcess process({PBA_TOKEN, tokens.Arguments(), {}, false, {}}, theirs);
        close(theirs);
        using protocol::TokenError;
        QCOMPARE(service.Ask(protocol::UnwrapByNextKey{})->error, TokenError::Failed);
        QCOMPARE(service.Ask(protocol::Unwrap{"pkcs11:", {}})->error, TokenError::Failed);
        QVERIFY(service.Ask(protocol::LogOut{}));
        QCOMPARE(service.Ask(protocol::LogIn{})->error, TokenError::Removed); // before the first list
        const auto list = service.Ask(protocol::ListTokens{});
        QVERIFY(list && list->loaded && list->tokens.size() == 3);
        protocol::LogIn login{list->tokens[0].identity, MakeSecret(SoftTokens::kPin)};
        ++login.token.label[0];
        QCOMPARE(service.Ask(login)->error, TokenError::Removed);
        QVERIFY(tokens.TakeLogins().isEmpty());
        --login.token.label[0];
        QCOMPARE(service.Ask(login)->error, TokenError::None);
        QCOMPARE(service.Ask(protocol::Unwrap{"no URI", {}})->error, TokenError::NoKey);
        QVERIFY(service.Ask(protocol::ListTokens{})); // ends the login
        QCOMPARE(service.Ask(protocol::UnwrapByNextKey{})->error, TokenError::Failed);
        service.Close();
        QCOMPARE(process.Reap().code, 0);
        CompareFailure(Run(PBA_TOKEN, {"--channel", "0", "--module", "x"}), 2, "started by pba_host");
    }
};

PBA_REGISTER_TEST(TokenModulesTest);

#include "tst_token_modules.moc"
