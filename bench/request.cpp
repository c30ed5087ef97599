// SPDX-License-Identifier: Apache-2.0
// What it costs to ask another process and to have its answer: the median of many, from the first byte that
// is written to the reply that is read.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

#include "host/protocol/client.h"
#include "host/protocol/server.h"
#include "host/protocol/socket_channel.h"

namespace {

constexpr int kRequests = 5000;

void Serve(int descriptor)
{
    protocol::Server server(std::make_unique<protocol::SocketChannel>(descriptor));
    while (const auto request = server.Receive(protocol::Limit()))
        std::visit([&]<typename Request>(const Request &) { server.Reply(typename Request::Reply()); },
                   *request);
}

double MedianMicroseconds(protocol::Client *client)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    client->Ask(protocol::Hello{});
    for (int i = 0; i < kRequests; ++i) {
        const Clock::time_point start = Clock::now();
        if (!client->Ask(protocol::CheckReplaceable{}))
            return -1;
        times.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    std::nth_element(times.begin(), times.begin() + kRequests / 2, times.end());
    return times[kRequests / 2];
}

} // namespace

int main()
{
    const auto [ours, theirs] = protocol::SocketChannel::MakeSockets();
    if (fork() == 0) {
        close(ours);
        Serve(theirs);
        _exit(EXIT_SUCCESS);
    }
    close(theirs);
    {
        protocol::Client client(std::make_unique<protocol::SocketChannel>(ours));
        const double median = MedianMicroseconds(&client);
        std::printf("| Request and reply between two processes | %.0f µs | | | | at most 150 µs%s |\n", median,
                    median < 0 || median > 150 ? " (missed)" : "");
    }
    wait(nullptr);
    return EXIT_SUCCESS;
}
