// The cards in the readers of PC/SC. The service can only be waited for by a call that blocks, so a thread of
// this object's own does; it outlives a service that starts late, dies or comes back.
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <winscard.h>

namespace pbe {

class CardWatch
{
public:
    CardWatch();
    // Ends the thread.
    ~CardWatch();
    CardWatch(const CardWatch &) = delete;
    CardWatch &operator=(const CardWatch &) = delete;

    // Readable when cards came or went since the last TakeNotice, however often; -1 when there is no such
    // file.
    int NoticeFile() const { return m_notice; }
    void TakeNotice();
    int CountCards() const { return m_count; }

private:
    struct Reader
    {
        std::string name;
        DWORD state;
    };
    using Card = std::pair<std::string, DWORD>; // the reader, and its state with the count of its changes

    void Run();
    void WatchReaders();
    bool ListReaders();
    bool WaitForChange();
    void Report(std::vector<Card> cards);
    void Pause(int milliseconds);

    const int m_notice;
    std::atomic<int> m_count = 0;
    std::atomic<SCARDCONTEXT> m_context = 0;

    // The thread's alone.
    std::vector<Reader> m_readers;
    std::vector<Card> m_cards;

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::atomic<bool> m_stop = false;
    bool m_ended = false;
    std::thread m_thread;
};

} // namespace pbe
