// SPDX-License-Identifier: Apache-2.0
// pba_text: asks at a terminal, its standard input and output, for what pba_host, which has started it, wants
// to know.
#include <csignal>
#include <cstdio>

#include "base/process_protection.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/confinement.h"
#include "host/screen/exit_codes.h"
#include "host/screen/options.h"
#include "host/text/text_screen.h"

namespace {

// In the name of the program that the person has started.
int Refuse(const char *what, int exitCode)
{
    std::fprintf(stderr, "pba_host: %s\n", what);
    return exitCode;
}

bool PutUpWalls(const host::ScreenOptions &options, std::string *fault)
{
    host::Confinement confinement = host::ForTerminal(options.root);
    confinement.user = options.user;
    confinement.landlockRequired = options.landlockRequired;
    confinement.descriptors = options.Descriptors();
    return Confine(confinement, fault);
}

int Talk(const host::ScreenOptions &options)
{
    protocol::Client client(std::make_unique<protocol::SocketChannel>(options.channel));
    const text::Terminal terminal(client.Descriptor(),
                                  [&] { return client.TakeEvents() && !client.StopRequested(); });
    if (!terminal.IsUsable())
        return Refuse("standard input is no terminal; start --text at one", host::kScreenCannotStand);
    const host::Catalogue catalogue(options.root + "/pba/l10n_text");
    const bool started = text::TextScreen(client, terminal, catalogue).Run();
    if (!started && client.WhyClosed() > protocol::Fault::Gone)
        std::fprintf(stderr, "pba_text: %s\n", protocol::Describe(client.WhyClosed()));
    return started || client.StopRequested() ? host::kScreenDone : host::kScreenFailed;
}

} // namespace

// The ends of the line and of the service are noticed, and put the terminal right.
int main(int argc, char **argv)
{
    base::ProtectProcess();
    std::signal(SIGHUP, SIG_IGN);
    const std::optional<host::ScreenOptions> options = host::ParseScreenOptions(argc, argv);
    if (!options || !protocol::SocketChannel::IsUsable(options->channel))
        return Refuse("pba_text is started by pba_host", host::kScreenUsage);
    std::string fault;
    if (!PutUpWalls(*options, &fault))
        return Refuse(fault.c_str(), host::kScreenCannotStand);
    base::LockMemory();
    return Talk(*options);
}
