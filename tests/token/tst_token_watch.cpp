// SPDX-License-Identifier: Apache-2.0
// Word of cards that come and go. This program's own card service takes the place of the library's, so that
// it can start late, die, and let a thousand cards come and go in no time.
#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>

#include <QElapsedTimer>
#include <QTest>

#include <unistd.h>
#include <winscard.h>

#include "host/service/tokens/token_watch.h"

namespace {

struct Service
{
    std::mutex mutex;
    std::condition_variable changed;
    bool running = false;
    std::atomic<bool> hangs = false;
    bool hasReader = true;
    bool cancelled = false;
    DWORD cardChanges = 0; // a card is in when odd
    std::atomic<int> calls = 0;

    void Do(const std::function<void()> &change)
    {
        const std::lock_guard lock(mutex);
        change();
        changed.notify_all();
    }
    DWORD State() const
    {
        const DWORD card = cardChanges % 2 != 0 ? SCARD_STATE_PRESENT : SCARD_STATE_EMPTY;
        return cardChanges << 16 | card;
    }
} s_service;

constexpr char kReaders[] = "Reader 0\0";

} // namespace

LONG SCardEstablishContext(DWORD, LPCVOID, LPCVOID, LPSCARDCONTEXT context)
{
    const std::lock_guard lock(s_service.mutex);
    ++s_service.calls;
    *context = 1;
    s_service.cancelled = false;
    return s_service.running ? SCARD_S_SUCCESS : SCARD_E_NO_SERVICE;
}

LONG SCardReleaseContext(SCARDCONTEXT)
{
    return SCARD_S_SUCCESS;
}

LONG SCardListReaders(SCARDCONTEXT, LPCSTR, LPSTR readers, LPDWORD)
{
    while (s_service.hangs)
        pause();
    const std::lock_guard lock(s_service.mutex);
    if (!s_service.running)
        return SCARD_E_NO_SERVICE;
    if (!s_service.hasReader)
        return SCARD_E_NO_READERS_AVAILABLE;
    *reinterpret_cast<const char **>(readers) = kReaders;
    return SCARD_S_SUCCESS;
}

LONG SCardFreeMemory(SCARDCONTEXT, LPCVOID)
{
    return SCARD_S_SUCCESS;
}

// The last one is the notice of readers.
LONG SCardGetStatusChange(SCARDCONTEXT, DWORD timeout, SCARD_READERSTATE *states, DWORD count)
{
    std::unique_lock lock(s_service.mutex);
    ++s_service.calls;
    const bool hadReader = s_service.hasReader;
    const auto cardHasChanged = [&] {
        return s_service.hasReader && count == 2 && states[0].dwCurrentState != s_service.State();
    };
    const bool woken = s_service.changed.wait_for(lock, std::chrono::milliseconds(timeout), [&] {
        return !s_service.running || s_service.cancelled || s_service.hasReader != hadReader ||
               cardHasChanged();
    });
    if (!s_service.running)
        return SCARD_E_NO_SERVICE;
    if (s_service.cancelled)
        return SCARD_E_CANCELLED;
    if (cardHasChanged())
        states[0].dwEventState = s_service.State() | SCARD_STATE_CHANGED;
    return woken ? SCARD_S_SUCCESS : SCARD_E_TIMEOUT;
}

LONG SCardCancel(SCARDCONTEXT)
{
    while (s_service.hangs)
        pause();
    s_service.Do([] { s_service.cancelled = true; });
    return SCARD_S_SUCCESS;
}

class TokenWatchTest : public QObject
{
    Q_OBJECT

private slots:
    void CardsComeAndGo()
    {
        // The service starts late; until then it is not asked all the time.
        QTRY_VERIFY(s_service.calls >= 1);
        QTest::qWait(500);
        QVERIFY(s_service.calls < 10);
        const std::pair<std::function<void()>, bool> steps[] = {
            {[] { s_service.running = true, ++s_service.cardChanges; }, true},
            {[] { ++s_service.cardChanges; }, true},
            // A reader by itself is no token, nor is a card without one.
            {[] { s_service.hasReader = false; }, false},
            {[] { ++s_service.cardChanges; }, false},
            {[] { s_service.hasReader = true; }, true},
            // A service that dies takes its cards along.
            {[] { s_service.running = false; }, true},
            {[] { s_service.running = true; }, true},
            // A card in another's place.
            {[] { s_service.cardChanges += 2; }, true}};
        for (const auto &[change, isTold] : steps) {
            m_notices = 0;
            s_service.Do(change);
            if (!isTold)
                QTest::qWait(200);
            QTRY_COMPARE(m_notices.load(), isTold ? 1 : 0);
        }
    }

    // The last notice comes after the last change.
    void AStormIsToldInFewNotices()
    {
        m_notices = 0;
        QElapsedTimer storm; // longer where the computer is busy
        storm.start();
        for (int change = 0; change < 1001; ++change) {
            ChangeCard();
            QTest::qWait(1);
        }
        const int notices = m_notices;
        QVERIFY2(notices > 0 && notices <= storm.elapsed() / 40 + 1, QByteArray::number(notices));
        QTRY_COMPARE(m_seen.load(), s_service.cardChanges);
    }

    // The last one: such a service does not keep this program from ending.
    void AServiceThatHangs()
    {
        const int calls = s_service.calls;
        s_service.hangs = true;
        ChangeCard();
        QTest::qWait(100);
        QCOMPARE(s_service.calls, calls);
    }

private:
    static void ChangeCard()
    {
        s_service.Do([] { ++s_service.cardChanges; });
    }

    std::atomic<int> m_notices = 0;
    std::atomic<DWORD> m_seen = 0; // changes when there was a notice last
    host::TokenWatch m_watch{[this] {
        const std::lock_guard lock(s_service.mutex);
        m_seen = s_service.cardChanges;
        ++m_notices;
    }};
};

QTEST_GUILESS_MAIN(TokenWatchTest)
#include "tst_token_watch.moc"
