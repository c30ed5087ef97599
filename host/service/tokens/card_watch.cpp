// SPDX-License-Identifier: Apache-2.0
#include "host/service/tokens/card_watch.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <system_error>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

#include "host/log.h"

namespace host {

namespace {

// How soon a service that starts late is found.
constexpr int kServicePause = 1000; // milliseconds
// A reader whose name is known but not its state any more.
constexpr int kReaderPause = 100;
// The service compares the readers with those at the start of the wait: one that came between the list and
// the wait is found at the end of it.
constexpr DWORD kLongestWait = 3000;
// How often a wait is cancelled until it is: a cancellation reaches only a wait that has begun.
constexpr auto kCancelInterval = std::chrono::milliseconds(10);
// How long a service that hangs may delay the end of the program.
constexpr auto kPatience = std::chrono::seconds(1);

constexpr char kReaderComes[] = "\\\\?PnP?\\Notification";

// Others using a card is no change of cards.
constexpr DWORD kChangeCount = 0xFFFF0000;
constexpr DWORD kTold = SCARD_STATE_PRESENT | SCARD_STATE_MUTE | kChangeCount;

} // namespace

CardWatch::CardWatch()
    : m_notice(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

CardWatch::~CardWatch()
{
    if (m_notice >= 0)
        close(m_notice);
}

void CardWatch::Start()
{
    m_running = 1;
    m_thread = std::thread([self = shared_from_this()] { self->Run(); });
}

// A cancellation may hang like what it cancels, so another thread makes it.
void CardWatch::Stop()
{
    std::unique_lock lock(m_mutex);
    m_stop = true;
    m_wake.notify_all();
    std::thread canceller;
    try {
        canceller = std::thread([self = shared_from_this()] { self->Cancel(); });
        ++m_running;
    } catch (const std::system_error &) {
    }
    const bool ended = m_wake.wait_for(lock, kPatience, [this] { return m_running == 0; });
    lock.unlock();
    for (std::thread *thread : {&m_thread, &canceller}) {
        if (thread->joinable())
            ended ? thread->join() : thread->detach();
    }
}

void CardWatch::Cancel()
{
    std::unique_lock lock(m_mutex);
    while (!m_wake.wait_for(lock, kCancelInterval, [this] { return m_running == 1; })) {
        lock.unlock();
        if (const SCARDCONTEXT context = m_context)
            SCardCancel(context);
        lock.lock();
    }
    lock.unlock();
    End();
}

void CardWatch::End()
{
    const std::lock_guard lock(m_mutex);
    --m_running;
    m_wake.notify_all();
}

void CardWatch::TakeNotice()
{
    std::uint64_t notices = 0;
    [[maybe_unused]] const ssize_t size = read(m_notice, &notices, sizeof notices);
}

void CardWatch::Run()
{
    while (!m_stop) {
        SCARDCONTEXT context = 0;
        if (SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context) == SCARD_S_SUCCESS) {
            Log(kLogCalls, "The card service answers.");
            m_context = context;
            WatchReaders();
            m_context = 0;
            SCardReleaseContext(context);
            if (!m_stop)
                Log(kLogCalls, "The card service answers no more.");
        }
        m_readers.clear();
        Report({});
        Pause(kServicePause);
    }
    End();
}

void CardWatch::WatchReaders()
{
    while (!m_stop && ListReaders() && WaitForChange()) {
        std::vector<Card> cards;
        for (const Reader &reader : m_readers) {
            if (reader.state & SCARD_STATE_PRESENT)
                cards.emplace_back(reader.name, reader.state & kTold);
        }
        Report(std::move(cards));
    }
}

// A reader that stays keeps the state that is known of it.
bool CardWatch::ListReaders()
{
    char *names = nullptr;
    DWORD size = SCARD_AUTOALLOCATE;
    const LONG result = SCardListReaders(m_context, nullptr, reinterpret_cast<char *>(&names), &size);
    if (result != SCARD_S_SUCCESS && result != SCARD_E_NO_READERS_AVAILABLE)
        return false;
    std::vector<Reader> readers;
    for (const char *name = names; name && *name; name += std::strlen(name) + 1) {
        const auto known = std::find_if(m_readers.begin(), m_readers.end(),
                                        [&](const Reader &reader) { return reader.name == name; });
        readers.push_back({name, known == m_readers.end() ? SCARD_STATE_UNAWARE : known->state});
    }
    if (names)
        SCardFreeMemory(m_context, names);
    m_readers = std::move(readers);
    return true;
}

bool CardWatch::WaitForChange()
{
    std::vector<SCARD_READERSTATE> states(m_readers.size() + 1);
    for (std::size_t i = 0; i < m_readers.size(); ++i) {
        states[i].szReader = m_readers[i].name.c_str();
        states[i].dwCurrentState = m_readers[i].state;
    }
    states.back().szReader = kReaderComes;
    const LONG result = SCardGetStatusChange(m_context, kLongestWait, states.data(), states.size());
    if (result == SCARD_E_UNKNOWN_READER) {
        m_readers.clear();
        Pause(kReaderPause);
        return true;
    }
    if (result != SCARD_S_SUCCESS && result != SCARD_E_TIMEOUT)
        return false;
    for (std::size_t i = 0; i < m_readers.size(); ++i) {
        if (states[i].dwEventState & SCARD_STATE_CHANGED)
            m_readers[i].state = states[i].dwEventState & ~DWORD{SCARD_STATE_CHANGED};
    }
    return true;
}

void CardWatch::Report(std::vector<Card> cards)
{
    if (cards == m_cards)
        return;
    m_cards = std::move(cards);
    const std::uint64_t notice = 1;
    // It can only fail when the counter is full, and then a notice is waiting already.
    [[maybe_unused]] const ssize_t written = write(m_notice, &notice, sizeof notice);
}

void CardWatch::Pause(int milliseconds)
{
    std::unique_lock lock(m_mutex);
    m_wake.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return m_stop.load(); });
}

} // namespace host
