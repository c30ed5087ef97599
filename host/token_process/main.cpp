// SPDX-License-Identifier: Apache-2.0
// pba_token: runs one PKCS#11 module, which may hang, crash or lie, apart from the service. Started by it:
//   pba_token --channel DESCRIPTOR --module FILE [--user UID:GID[,GID...]]
// Exit codes: 0 the service has closed the connection, 1 failed, 2 not to be used like this, 6 its rights
// cannot be given up.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "base/process_protection.h"
#include "host/protocol/socket_channel.h"
#include "host/screen/confinement.h"
#include "host/screen/exit_codes.h"
#include "host/screen/system_calls.h"
#include "host/token_process/module_server.h"

namespace {

struct CommandLine
{
    int channel = -1;
    const char *module = nullptr;
    const char *user = "";
};

int Refuse(int exitCode, const char *what)
{
    std::fprintf(stderr, "pba_token: %s\n", what);
    return exitCode;
}

bool Parse(int argc, char **argv, CommandLine *line)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::strcmp(argv[i], "--channel") == 0)
            line->channel = std::atoi(argv[i + 1]);
        else if (std::strcmp(argv[i], "--module") == 0)
            line->module = argv[i + 1];
        else if (std::strcmp(argv[i], "--user") == 0)
            line->user = argv[i + 1];
        else
            return false;
    }
    return argc % 2 == 1 && line->module;
}

// A module reads nothing that is typed at a terminal, and writes nothing over it.
void LeaveTerminal()
{
    setsid();
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (stream != STDERR_FILENO || isatty(stream) != 0)
            dup2(nothing, stream);
    }
    close(nothing);
}

// A module that hangs keeps the other thread from noticing that the service is gone.
void EndWithService(int channel)
{
    std::thread([channel] {
        pollfd end{channel, 0, 0};
        while (poll(&end, 1, -1) < 0) {
        }
        _exit(host::kScreenDone);
    }).detach();
}

int Serve(const CommandLine &line)
{
    LeaveTerminal();
    std::string fault;
    if (!host::RenounceRights(line.user, {line.channel}, &fault) || !host::ForbidTampering(&fault))
        return Refuse(host::kScreenCannotStand, fault.c_str());
    base::LockMemory();
    auto channel = std::make_unique<protocol::SocketChannel>(line.channel);
    EndWithService(line.channel);
    token_process::ModuleServer(std::move(channel), line.module).Run();
    // What a module does at its end is of no use to anybody.
    _exit(host::kScreenDone);
}

} // namespace

int main(int argc, char **argv)
{
    base::ProtectProcess();
    CommandLine line;
    if (!Parse(argc, argv, &line) || !protocol::SocketChannel::IsUsable(line.channel))
        return Refuse(host::kScreenUsage, "it is started by pba_host");
    try {
        return Serve(line);
    } catch (const std::exception &fault) {
        return Refuse(host::kScreenFailed, fault.what());
    }
}
