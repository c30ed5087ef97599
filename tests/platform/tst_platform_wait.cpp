// SPDX-License-Identifier: Apache-2.0
// The wait for another process: what is seen of it, that nothing else runs, and what becomes of what a person
// does meanwhile. Under an X server the keys and clicks are the server's; elsewhere they come as a
// framebuffer's screen sends them, which has read nothing before the wait is over.
#include <atomic>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSocketNotifier>
#include <QTest>
#include <QTimer>

#include "pbe/application.h"
#include "pbe/keyboard.h"
#include "pbe/screen.h"

namespace {

constexpr char kProbe[] = "key 65"; // a blank
constexpr char kMark[] = "key 41";  // an f

bool IsX11()
{
    return QGuiApplication::platformName() == u"xcb";
}

// What another process answers by.
struct Pipe
{
    Pipe() { opened = pipe(ends) == 0; }
    ~Pipe()
    {
        close(ends[0]);
        close(ends[1]);
    }
    void Answer() const { QCOMPARE(write(ends[1], "x", 1), 1); }

    int ends[2];
    bool opened = false;
};

// "keydown 50 key 38 click 1": by evdev's numbers of the keys, and 8.
void PlayAtTheServer(const QByteArray &input)
{
    QCOMPARE(std::system("xdotool " + input), 0);
}

void Send(QEvent::Type type, quint32 key)
{
    constexpr quint32 kShift = 50;
    static Qt::KeyboardModifiers s_held;
    QKeyEvent event(type, key == kShift ? Qt::Key_Shift : Qt::Key_Q, s_held, key, 0, 0, u"q"_qs);
    QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &event);
    if (key == kShift)
        s_held.setFlag(Qt::ShiftModifier, type == QEvent::KeyPress);
}

void PlayAtTheDevice(const QByteArray &input)
{
    const QList<QByteArray> words = input.split(' ');
    for (qsizetype i = 0; i + 1 < words.size(); i += 2) {
        if (words[i] != "keyup")
            Send(QEvent::KeyPress, words[i + 1].toUInt());
        if (words[i] != "keydown")
            Send(QEvent::KeyRelease, words[i + 1].toUInt());
    }
}

void Play(const QByteArray &input)
{
    if (!input.isEmpty())
        IsX11() ? PlayAtTheServer(input) : PlayAtTheDevice(input);
}

} // namespace

class TestWait : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QWidget>();
        m_window->setWindowFlag(Qt::FramelessWindowHint);
        m_window->setGeometry(0, 0, 400, 300);
        m_window->setPalette(QPalette(Qt::red, Qt::red));
        m_window->show();
        m_window->activateWindow();
        QTRY_COMPARE(Grab().pixelColor(1, 1), Qt::red);
        m_painted = 0;
        m_carrier = nullptr;
        qApp->installEventFilter(this);
        PbeShowWaitSign(true);
        QPbeScreen::Current()->SetKeyboardLayout(u"00000407"_qs);
    }
    void cleanup()
    {
        qApp->removeEventFilter(this);
        m_window.reset();
        m_pipe.reset();
    }

    void Descriptors()
    {
        const auto closed = std::make_unique<Pipe>();
        const int number = closed->ends[0];
        closed->Answer();
        QVERIFY(PbeAwait(number) && PbeAwait(number));
        close(closed->ends[1]);
        QVERIFY(PbeAwait(number));
        close(number);
        QVERIFY(!PbeAwait(number) && !PbeAwait(-1) && !PbeAwait(1023));
        closed->ends[0] = closed->ends[1] = -1;
        Pipe ended;
        std::thread end([&] { close(std::exchange(ended.ends[1], -1)); });
        const bool answered = PbeAwait(ended.ends[0]);
        end.join();
        QVERIFY(answered);
    }

    void NothingButTheSign()
    {
        const QImage before = Grab();
        QStringList happened;
        QObject context;
        QTimer::singleShot(0, &context, [&] { happened.append(u"timer"_qs); });
        QMetaObject::invokeMethod(
            &context, [&] { happened.append(u"event"_qs); }, Qt::QueuedConnection);
        Await();
        QCOMPARE(happened, QStringList());
        QCOMPARE(m_carrier, m_window.get());
        // Of the two pictures that were on the display one after the other.
        QVERIFY(m_pictures[0] != m_pictures[1] && m_pictures[1] != before);
        QCOMPARE(Grab(), before);
        QTRY_COMPARE(happened.size(), 2);
    }

    void SignIsOverTheBoxInFront()
    {
        QDialog box;
        QTimer::singleShot(0, &box, [&] {
            QVERIFY(QTest::qWaitForWindowExposed(&box));
            Await();
            box.close();
        });
        box.exec();
        QCOMPARE(m_carrier, &box);
        QVERIFY(m_window->findChildren<QWidget *>(u"waitSign"_qs).isEmpty());
    }

    // Long enough for a sign.
    void NoSign()
    {
        const std::pair<const char *, std::function<void()>> rows[] = {
            {"not wanted", [] { PbeShowWaitSign(false); }},
            {"repaint is off", [] { QPbeScreen::Current()->TurnOffScreenRepaint(); }},
            {"no window to be seen", [this] { m_window->hide(); }}};
        for (const auto &[name, prepare] : rows) {
            PbeShowWaitSign(true);
            prepare();
            const Pipe pipe;
            std::thread late([&] {
                std::this_thread::sleep_for(std::chrono::milliseconds(400));
                pipe.Answer();
            });
            const bool answered = PbeAwait(pipe.ends[0]);
            late.join();
            QPbeScreen::Current()->TurnOnScreenRepaint();
            QVERIFY2(answered && m_painted == 0, name);
        }
    }

    void Input()
    {
        const struct
        {
            const char *name;
            QByteArray before, during, after;
            QString text;
            bool capsLock = false;
        } rows[] = {{"text", "key 38", "key 39 key 40", "key 42", u"ag"_qs},
                    {"Shift goes up", "keydown 50", "key 39 keyup 50 key 40", "key 38", u"a"_qs},
                    {"Shift goes down", "", "keydown 50 key 39", "key 38 keyup 50 key 38", u"Aa"_qs},
                    {"AltGr goes down", "", "keydown 108", "key 24 keyup 108 key 24", u"@q"_qs},
                    {"AltGr goes up", "keydown 108", "keyup 108", "key 24", u"q"_qs},
                    {"a key goes down", "", "keydown 39", "keyup 39 key 38 key 39", u"as"_qs},
                    {"a key goes up", "keydown 38", "keyup 38 key 39", "key 38", u"aa"_qs},
                    {"Caps Lock on", "", "key 66", "key 38", u"A"_qs, true},
                    {"Caps Lock off", "", "key 38 key 66 key 39", "key 38", u"a"_qs}};
        QLineEdit edit(m_window.get());
        edit.show();
        edit.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_VERIFY(IsHeard(edit));
        for (const auto &row : rows) {
            // Behind all that has been played so far.
            Play(kMark);
            QTRY_VERIFY2(edit.text().contains(u'f', Qt::CaseInsensitive), row.name);
            edit.clear();
            Play(row.before);
            QTRY_VERIFY2(edit.text().size() ==
                             row.before.startsWith("key 38") + row.before.contains("keydown 38"),
                         row.name);
            Await(row.during);
            QTRY_VERIFY2(IsHeard(edit), row.name);
            QCOMPARE(PbeIsCapsLockOn(), row.capsLock);
            Play(row.after);
            // Without the probes.
            QTRY_COMPARE(row.name + edit.text().simplified().remove(u' '), row.name + row.text);
        }
    }

    // As the toolkit does at a keyboard of the framebuffer: the loop finds the device readable, the toolkit
    // reads it and puts the keys in line, and a later turn delivers them.
    void KeysThatWaitAtTheDevice()
    {
        QLineEdit edit(m_window.get());
        edit.show();
        edit.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        const Pipe device;
        QSocketNotifier reader(device.ends[0], QSocketNotifier::Read);
        QStringList keys{u"a"_qs, u"b"_qs};
        connect(&reader, &QSocketNotifier::activated, this, [&] {
            char byte = 0;
            QCOMPARE(read(device.ends[0], &byte, 1), 1);
            qt_handleKeyEvent(m_window->windowHandle(), QEvent::KeyPress, Qt::Key_A, Qt::NoModifier,
                              keys.takeFirst());
        });
        device.Answer();
        Await();
        QTRY_COMPARE(keys.size(), 1);
        QTRY_VERIFY(IsHeard(edit));
        device.Answer();
        QTRY_COMPARE(edit.text().simplified(), u"b"_qs);
    }

    void Clicks()
    {
        if (!IsX11())
            QSKIP("no pointer");
        QPushButton button(u"&button"_qs, m_window.get());
        button.setFocusPolicy(Qt::NoFocus);
        button.show();
        int clicks = 0;
        connect(&button, &QPushButton::clicked, this, [&] { ++clicks; });
        QLineEdit edit(m_window.get());
        edit.setGeometry(200, 200, 50, 30);
        edit.show();
        edit.setFocus();
        Play("mousemove 10 10 mousedown 1");
        QTRY_VERIFY(button.isDown());
        Await("mouseup 1 click 1 keydown 64 key 56 keyup 64 mousedown 1");
        QTRY_VERIFY(IsHeard(edit));
        QCOMPARE(clicks, 1);
        edit.clear();
        Play(QByteArray("mouseup 1 click 1 ") + kMark);
        QTRY_VERIFY(edit.text().contains(u'f'));
        QCOMPARE(clicks, 2);
    }

    // The last one, for the application runs no loop afterwards.
    void StopIsKept()
    {
        PbeRequestStop();
        Await();
        QCOMPARE(QApplication::exec(), 1);
    }

private:
    QImage Grab() const { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }

    // The answer comes when the sign has been painted some times, and `input` has been played.
    void Await(const QByteArray &input = {})
    {
        m_pipe.emplace();
        m_painted = 0;
        m_played = !IsX11();
        std::thread person([&] {
            if (IsX11())
                Play(input);
            m_played = true;
        });
        const bool answered = PbeAwait(m_pipe->ends[0]);
        person.join();
        QVERIFY(answered);
        if (!IsX11())
            Play(input);
    }

    // Whether keys have an effect again.
    static bool IsHeard(const QLineEdit &edit)
    {
        const auto hasBlank = [&edit] { return edit.text() != edit.text().simplified().remove(u' '); };
        if (!hasBlank())
            Play(kProbe);
        QTest::qWait(10);
        return hasBlank();
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || receiver->objectName() != u"waitSign")
            return false;
        m_carrier = static_cast<QWidget *>(receiver)->parentWidget();
        m_pictures[m_painted++ % 2] = Grab();
        if (m_painted >= 5 && m_played)
            m_pipe->Answer();
        return false;
    }

    std::unique_ptr<QWidget> m_window;
    std::optional<Pipe> m_pipe;
    QWidget *m_carrier = nullptr;
    QImage m_pictures[2];
    int m_painted = 0;
    std::atomic<bool> m_played = false;
};

QTEST_MAIN(TestWait)
#include "tst_platform_wait.moc"
