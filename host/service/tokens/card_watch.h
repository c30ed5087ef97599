// SPDX-License-Identifier: Apache-2.0
// The cards in the readers of PC/SC. The service can only be waited for by a call that blocks, so a thread of
// this object's own does; it outlives a service that starts late, dies or comes back. Where the service
// hangs, so does the thread, and with it what it works on: it is shared, and must not keep the program from
// ending.
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include <winscard.h>

namespace host {

class CardWatch : public std::enable_shared_from_this<CardWatch>
{
public:
    CardWatch();
    ~CardWatch();
    CardWatch(const CardWatch &) = delete;
    CardWatch &operator=(const CardWatch &) = delete;

    // Throws std::system_error when there is no thread to be had.
    void Start();
    // Ends the thread, or leaves it behind when the service does not let it go. Called once.
    void Stop();

    // Readable when cards came or went since the last TakeNotice, however often; -1 when there is no such
    // file.
    int NoticeFile() const { return m_notice; }
    void TakeNotice();

private:
    struct Reader
    {
        std::string name;
        DWORD state;
    };
    using Card = std::pair<std::string, DWORD>; // the reader, and its state with the count of its changes

    void Run();
    void Cancel();
    void End();
    void WatchReaders();
    bool ListReaders();
    bool WaitForChange();
    void Report(std::vector<Card> cards);
    void Pause(int milliseconds);

    const int m_notice;
    std::atomic<SCARDCONTEXT> m_context = 0;

    // The thread's alone.
    std::vector<Reader> m_readers;
    std::vector<Card> m_cards;

    std::mutex m_mutex;
    std::condition_variable m_wake;
    std::atomic<bool> m_stop = false;
    int m_running = 0; // threads
    std::thread m_thread;
};

} // namespace host
