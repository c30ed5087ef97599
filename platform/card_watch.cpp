#include "card_watch.h"

#include <algorithm>
#include <chrono>
#include <cstring>
#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

#include "pbe/log.h"

namespace pbe {

namespace {

constexpr std::uint32_t kInformation = 700;
constexpr std::uint32_t kNamedSeverity = 5;

// How soon a service that starts late is found.
constexpr int kServicePause = 1000; // milliseconds
// A reader whose name is known but not its state any more.
constexpr int kReaderPause = 100;
// The service compares the readers with those at the start of the wait: one that came between the list and
// the wait is found at the end of it.
constexpr DWORD kLongestWait = 3000;
// How often a wait is cancelled until it is: a cancellation reaches only a wait that has begun.
constexpr auto kCancelInterval = std::chrono::milliseconds(10);

constexpr char kReaderComes[] = "\\\\?PnP?\\Notification";

// Others using a card is no change of cards.
constexpr DWORD kChangeCount = 0xFFFF0000;
constexpr DWORD kTold = SCARD_STATE_PRESENT | SCARD_STATE_MUTE | kChangeCount;

void Log(const char *line)
{
    PbeLogMessage(kInformation, kNamedSeverity, "PBE     ", line);
}

} // namespace

CardWatch::CardWatch()
    : m_notice(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
    , m_thread([this] { Run(); })
{
}

CardWatch::~CardWatch()
{
    {
        std::unique_lock lock(m_mutex);
        m_stop = true;
        m_wake.notify_all();
        while (!m_wake.wait_for(lock, kCancelInterval, [this] { return m_ended; })) {
            if (const SCARDCONTEXT context = m_context)
                SCardCancel(context);
        }
    }
    m_thread.join();
    if (m_notice >= 0)
        close(m_notice);
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
            Log("the card service answers\r\n");
            m_context = context;
            WatchReaders();
            m_context = 0;
            SCardReleaseContext(context);
            if (!m_stop)
                Log("the card service answers no more\r\n");
        }
        m_readers.clear();
        Report({});
        Pause(kServicePause);
    }
    const std::lock_guard lock(m_mutex);
    m_ended = true;
    m_wake.notify_all();
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
    m_count = static_cast<int>(m_cards.size());
    const std::uint64_t notice = 1;
    // It can only fail when the counter is full, and then a notice is waiting already.
    [[maybe_unused]] const ssize_t written = write(m_notice, &notice, sizeof notice);
}

void CardWatch::Pause(int milliseconds)
{
    std::unique_lock lock(m_mutex);
    m_wake.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return m_stop.load(); });
}

} // namespace pbe
