// Word of cards that come and go. This program's own card service takes the place of the library's, so that
// it can start late, die, and let a thousand cards come and go in no time.
#include <condition_variable>
#include <mutex>

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>
#include <QWidget>

#include <unistd.h>
#include <winscard.h>

#include "pbe/events.h"

namespace {

struct Service
{
    std::mutex mutex;
    std::condition_variable changed;
    bool running = false;
    bool hangs = false;
    bool hasReader = true;
    bool cancelled = false;
    DWORD cardChanges = 0; // a card is in when odd
    int calls = 0;

    template <typename Change>
    void Do(Change change)
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

void HangWhereItShould()
{
    std::unique_lock lock(s_service.mutex);
    const bool hangs = s_service.hangs;
    lock.unlock();
    while (hangs)
        pause();
}

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
    HangWhereItShould();
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
    HangWhereItShould();
    s_service.Do([] { s_service.cancelled = true; });
    return SCARD_S_SUCCESS;
}

class TestTokens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_window.show();
        m_window.installEventFilter(this);
    }
    void cleanup() { m_notices.clear(); }

    void CardsComeAndGo()
    {
        const auto set = [](bool Service::*what, bool on) { s_service.Do([=] { s_service.*what = on; }); };
        // The service starts late; until then it is not asked all the time.
        QTRY_VERIFY(s_service.calls >= 1);
        QTest::qWait(500);
        QVERIFY(s_service.calls < 10);
        set(&Service::running, true);
        ChangeCard();
        QTRY_COMPARE(m_notices, QList<int>{pbe::kTokenAdded});
        ChangeCard();
        QTRY_COMPARE(m_notices.mid(1), QList<int>{pbe::kTokenRemoved});
        // A reader by itself is no token; one that goes takes its card along.
        set(&Service::hasReader, false);
        ChangeCard();
        QTest::qWait(200);
        QCOMPARE(m_notices.size(), 2);
        set(&Service::hasReader, true);
        QTRY_COMPARE(m_notices.mid(2), QList<int>{pbe::kTokenAdded});
        // The service dies and takes its cards along, and comes back.
        set(&Service::running, false);
        QTRY_COMPARE(m_notices.mid(3), QList<int>{pbe::kTokenRemoved});
        set(&Service::running, true);
        QTRY_COMPARE(m_notices.mid(4), QList<int>{pbe::kTokenAdded});
        // In another's place.
        ChangeCard(2);
        QTRY_COMPARE(m_notices.mid(5), QList<int>{pbe::kTokenAdded});
    }

    // The window never finds a second event waiting behind the one that it handles, and the last event comes
    // after the last change.
    void AStormIsToldInFewEvents()
    {
        QElapsedTimer storm; // longer where the computer is busy
        storm.start();
        for (int change = 0; change < 1001; ++change) {
            ChangeCard();
            QTest::qWait(1);
        }
        QVERIFY2(m_notices.size() <= storm.elapsed() / 40 + 1, QByteArray::number(m_notices.size()));
        QTest::qWait(200);
        QTRY_VERIFY(!m_notices.isEmpty() && m_notices.last() == pbe::kTokenRemoved);
        QCOMPARE(m_mostQueued, 1);
        // While the window is busy elsewhere, the notices become one.
        m_notices.clear();
        for (int change = 0; change < 50; ++change) {
            ChangeCard();
            QThread::msleep(1);
        }
        QThread::msleep(200); // for who watches the cards
        QTRY_COMPARE(m_notices.size(), 1);
        QTest::qWait(200);
        QCOMPARE(m_notices.size(), 1);
    }

    // The last one: such a service does not keep this program from ending.
    void AServiceThatHangs()
    {
        int calls = 0;
        s_service.Do([&] {
            calls = s_service.calls;
            s_service.hangs = true;
        });
        ChangeCard();
        QTest::qWait(100);
        QCOMPARE(s_service.calls, calls);
    }

private:
    static void ChangeCard(DWORD times = 1)
    {
        s_service.Do([=] { s_service.cardChanges += times; });
    }
    bool eventFilter(QObject *window, QEvent *event) override
    {
        if (event->type() == pbe::kTokenAdded || event->type() == pbe::kTokenRemoved) {
            m_notices.append(event->type());
            const qsizetype handled = m_notices.size();
            QCoreApplication::sendPostedEvents(window, pbe::kTokenAdded);
            QCoreApplication::sendPostedEvents(window, pbe::kTokenRemoved);
            m_mostQueued = std::max(m_mostQueued, static_cast<int>(m_notices.size() - handled + 1));
        }
        return false;
    }

    QWidget m_window;
    QList<int> m_notices;
    int m_mostQueued = 0;
};

QTEST_MAIN(TestTokens)
#include "tst_platform_tokens.moc"
