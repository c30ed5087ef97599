// SPDX-License-Identifier: Apache-2.0
// Starts a screen and greets it, as the service does, for tools that measure a single process.
//   serve_screen PROGRAM [ARGUMENT...]        gets "--channel DESCRIPTOR" behind its arguments
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "host/protocol/server.h"
#include "host/protocol/socket_channel.h"

namespace {

pid_t Start(char **words, int channel)
{
    const pid_t screen = fork();
    if (screen != 0)
        return screen;
    fcntl(channel, F_SETFD, 0);
    std::string number = std::to_string(channel);
    char option[] = "--channel";
    std::vector<char *> arguments;
    for (; *words; ++words)
        arguments.push_back(*words);
    for (char *word : {option, number.data(), static_cast<char *>(nullptr)})
        arguments.push_back(word);
    execvp(arguments[0], arguments.data());
    std::perror(arguments[0]);
    _exit(EXIT_FAILURE);
}

void Greet(protocol::Server *server)
{
    protocol::HelloReply hello;
    hello.passwordsOffered = true;
    while (const auto request = server->Receive(protocol::Limit())) {
        if (!std::holds_alternative<protocol::Hello>(*request))
            break;
        server->Reply(hello);
    }
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return EXIT_FAILURE;
    const auto [ours, theirs] = protocol::SocketChannel::MakeSockets();
    const pid_t screen = Start(argv + 1, theirs);
    close(theirs);
    protocol::Server server(std::make_unique<protocol::SocketChannel>(ours));
    Greet(&server);
    int status = EXIT_FAILURE;
    waitpid(screen, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
