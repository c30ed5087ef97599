// SPDX-License-Identifier: Apache-2.0
// pba_text: asks at a terminal, its standard input and output, for what pba_host wants to know. Started by
// it:
//   pba_text --channel DESCRIPTOR --root DIRECTORY
// Exit codes: 0 the system starts, 1 the terminal or the service has ended before, 2 not to be used like
// this.
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "base/process_protection.h"
#include "host/protocol/socket_channel.h"
#include "host/text/text_screen.h"

namespace {

int Refuse(const char *what)
{
    std::fprintf(stderr, "pba_text: %s\n", what);
    return 2;
}

int Talk(int channel, const char *root)
{
    protocol::Client client(std::make_unique<protocol::SocketChannel>(channel));
    const text::Terminal terminal(client.Descriptor(),
                                  [&] { return client.TakeEvents() && !client.StopRequested(); });
    if (!terminal.IsUsable())
        return Refuse("standard input is no terminal; start pba_host --text at one");
    const text::Catalogue catalogue(std::string(root) + "/pba/l10n_text");
    const bool started = text::TextScreen(client, terminal, catalogue).Run();
    if (!started && client.WhyClosed() > protocol::Fault::Gone)
        std::fprintf(stderr, "pba_text: %s\n", protocol::Describe(client.WhyClosed()));
    return started ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    base::ProtectProcess();
    std::signal(SIGHUP, SIG_IGN); // the ends of the line and of the service are noticed, and put it right
    if (argc != 5 || std::strcmp(argv[1], "--channel") != 0 || std::strcmp(argv[3], "--root") != 0)
        return Refuse("it is started by pba_host --text");
    const int channel = std::atoi(argv[2]);
    if (!protocol::SocketChannel::IsUsable(channel))
        return Refuse("there is no service; it is started by pba_host --text");
    return Talk(channel, argv[4]);
}
