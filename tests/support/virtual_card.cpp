// A card in the virtual reader of the card service: it is there while this program runs. It only tells its kind;
// both sides put two bytes with the length before what they send.
#include <csignal>
#include <string>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr in_port_t kReaderPort = 35963;
constexpr useconds_t kRetryPause = 50'000;
const std::string kTellKind("\4", 1);
const std::string kKind("\0\4\x3b\x02\x14\x50", 6);
const std::string kNotUnderstood("\0\2\x6d\0", 4);

// Waits for the reader, whose service may still be starting.
int Insert()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(kReaderPort);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    for (;;) {
        const int reader = socket(AF_INET, SOCK_STREAM, 0);
        if (connect(reader, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0)
            return reader;
        close(reader);
        usleep(kRetryPause);
    }
}

bool Receive(int reader, std::size_t size, std::string *bytes)
{
    bytes->resize(size);
    return size == 0 || recv(reader, bytes->data(), size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

} // namespace

int main()
{
    std::signal(SIGPIPE, SIG_IGN);
    const int reader = Insert();
    std::string request;
    while (Receive(reader, 2, &request) &&
           Receive(reader, static_cast<unsigned char>(request[0]) * 256 + static_cast<unsigned char>(request[1]),
                   &request)) {
        // The other requests of one byte switch the card's power.
        const std::string answer = request == kTellKind ? kKind : request.size() > 1 ? kNotUnderstood : "";
        if (write(reader, answer.data(), answer.size()) != static_cast<ssize_t>(answer.size()))
            return 1;
    }
}
