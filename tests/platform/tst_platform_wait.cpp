// SPDX-License-Identifier: Apache-2.0
// The wait for another process: what is seen of it, that nothing else runs, and what becomes of what a person
// does meanwhile. Under an X server the keys and clicks are the server's; elsewhere they come as a
// framebuffer's screen sends them, which has read nothing before the wait is over.
#include <thread>

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

#include "pbe/application.h"
#include "pbe/keyboard.h"
#include "pbe/screen.h"

namespace {

constexpr char kProbe[] = "key 65";

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

void AwaitWhilePlaying(const QByteArray &input)
{
    const Pipe pipe;
    std::thread person([&] {
        if (IsX11())
            Play(input);
        pipe.Answer();
    });
    const bool answered = PbeAwait(pipe.ends[0]);
    person.join();
    QVERIFY(answered);
    if (!IsX11())
        Play(input);
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

    // The answer comes when the sign has been painted some times.
    void NothingButTheSign()
    {
        const QImage before = Grab();
        QStringList happened;
        QObject context;
        QTimer::singleShot(0, &context, [&] { happened.append(u"timer"_qs); });
        QMetaObject::invokeMethod(
            &context, [&] { happened.append(u"event"_qs); }, Qt::QueuedConnection);
        m_pipe.emplace();
        QVERIFY(PbeAwait(m_pipe->ends[0]));
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
            m_pipe.emplace();
            PbeAwait(m_pipe->ends[0]);
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
        } rows[] = {{"text", "key 38", "key 39 key 40", "key 41", u"af"_qs},
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
        QPbeScreen::Current()->SetKeyboardLayout(u"00000407"_qs);
        for (const auto &row : rows) {
            QTRY_VERIFY2(IsHeard(edit), row.name);
            edit.clear();
            Play(row.before);
            QTRY_VERIFY2(edit.text().size() ==
                             row.before.startsWith("key 38") + row.before.contains("keydown 38"),
                         row.name);
            AwaitWhilePlaying(row.during);
            QTRY_VERIFY2(IsHeard(edit), row.name);
            QCOMPARE(PbeIsCapsLockOn(), row.capsLock);
            Play(row.after);
            // Without the probes.
            QTRY_COMPARE(row.name + edit.text().simplified().remove(u' '), row.name + row.text);
            edit.clear();
        }
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
        AwaitWhilePlaying("mouseup 1 click 1 keydown 64 key 56 keyup 64 mousedown 1");
        QTRY_VERIFY(IsHeard(edit));
        QCOMPARE(clicks, 1);
        Play("mouseup 1");
        QTest::qWait(50);
        QCOMPARE(clicks, 1);
        Play("click 1");
        QTRY_COMPARE(clicks, 2);
    }

    // The last one, for the application runs no loop afterwards.
    void StopIsKept()
    {
        m_pipe.emplace();
        PbeRequestStop();
        QVERIFY(PbeAwait(m_pipe->ends[0]));
        QCOMPARE(QApplication::exec(), 1);
    }

private:
    QImage Grab() const { return QGuiApplication::primaryScreen()->grabWindow(0).toImage(); }

    // Whether keys have an effect again.
    bool IsHeard(QLineEdit &edit)
    {
        const qsizetype before = edit.text().size();
        Play(kProbe);
        QTest::qWait(10);
        return edit.text().size() > before;
    }

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (event->type() != QEvent::Paint || receiver->objectName() != u"waitSign")
            return false;
        m_carrier = static_cast<QWidget *>(receiver)->parentWidget();
        m_pictures[m_painted++ % 2] = Grab();
        if (m_painted == 5 && m_pipe)
            m_pipe->Answer();
        return false;
    }

    std::unique_ptr<QWidget> m_window;
    std::optional<Pipe> m_pipe;
    QWidget *m_carrier = nullptr;
    QImage m_pictures[2];
    int m_painted = 0;
};

QTEST_MAIN(TestWait)
#include "tst_platform_wait.moc"
