// SPDX-License-Identifier: Apache-2.0
// Stop, fonts and pointing devices, as they meet the application object and the X server.
#include <fontconfig/fontconfig.h>
#include <unistd.h>
#include <xcb/xinput.h>

#include <QApplication>
#include <QFontInfo>
#include <QTest>
#include <QTimer>

#include "platform/screen/x11.h"
#include "pbe/application.h"
#include "pbe/events.h"
#include "pbe/mouse_notifier.h"

using pbe::x11::Own;

namespace {

int s_argumentCount = 1;
char s_program[] = "tst";
char *s_arguments[] = {s_program, nullptr};

xcb_connection_t *OwnConnection()
{
    return qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

void EnableMouse(bool enabled)
{
    // Xvfb's first device behind the two pairs that every server has.
    constexpr xcb_input_device_id_t kMouse = 6;
    constexpr char kProperty[] = "Device Enabled";
    xcb_connection_t *connection = OwnConnection();
    const auto cookie = xcb_intern_atom(connection, false, sizeof kProperty - 1, kProperty);
    const xcb_atom_t atom = Own(xcb_intern_atom_reply(connection, cookie, nullptr))->atom;
    // One byte counts; the request is sent in units of four.
    const std::uint8_t value[4] = {enabled};
    xcb_input_xi_change_property(connection, kMouse, XCB_PROP_MODE_REPLACE, 8, atom, XCB_ATOM_INTEGER, 1,
                                 value);
    xcb_flush(connection);
}

} // namespace

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // A request ends one run of the loops and no later one.
    void StopWaitsForTheApplication()
    {
        PbeRequestStop();
        PbeRequestStop();
        {
            QApplication application(s_argumentCount, s_arguments);
            // No loop runs yet that could end.
            QCoreApplication::processEvents();
            QCOMPARE(QApplication::exec(), 1);
        }
        QApplication next(s_argumentCount, s_arguments);
        QTimer::singleShot(50, &next, [] { QCoreApplication::exit(7); });
        QCOMPARE(QApplication::exec(), 7);
    }

    // Set before there is an application, it starts with the first, and goes on with the next. What it is
    // called for stays unread in a loop of its own, which must come to its end.
    void WatchesForTheHost()
    {
        int ends[2];
        QCOMPARE(pipe(ends), 0);
        int calls = 0;
        const auto callback = [](void *context) {
            QEventLoop loop;
            QTimer::singleShot(30, &loop, &QEventLoop::quit);
            loop.exec();
            ++*static_cast<int *>(context);
            QCoreApplication::exit(7);
        };
        PbeWatch(-1, callback, &calls);
        PbeWatch(1023, callback, &calls);
        PbeWatch(ends[0], callback, &calls);
        QCOMPARE(write(ends[1], "x", 1), 1);
        for (const int expected : {1, 2}) {
            QApplication application(s_argumentCount, s_arguments);
            QEventLoop outer;
            QTimer::singleShot(0, &outer, [&outer] { outer.exec(); });
            QCOMPARE(QApplication::exec(), 7);
            QCOMPARE(calls, expected);
        }
        QApplication application(s_argumentCount, s_arguments);
        close(ends[1]);
        static int s_watched;
        s_watched = ends[0];
        PbeWatch(
            s_watched,
            [](void *) {
                PbeWatch(
                    s_watched,
                    [](void *) {
                        PbeWatch(s_watched, nullptr, nullptr);
                        QTimer::singleShot(50, qApp, [] { QCoreApplication::exit(8); });
                    },
                    nullptr);
            },
            nullptr);
        QCOMPARE(QApplication::exec(), 8);
        close(ends[0]);
        PbeWatch(s_watched, nullptr, nullptr);
    }

    void FontsComeWithoutTheSystemsRules()
    {
        QApplication application(s_argumentCount, s_arguments);
        for (const QString &family : {u"DejaVu Sans"_qs, u"DejaVu Sans Mono"_qs})
            QCOMPARE(QFontInfo(QFont(family)).family(), family);
        FcStrList *files = FcConfigGetConfigFiles(nullptr);
        while (const FcChar8 *file = FcStrListNext(files))
            QVERIFY2(*file != '/', reinterpret_cast<const char *>(file));
        FcStrListDone(files);
    }

    // First before the watch runs, then a storm, which is told once.
    void MouseComesAndGoes()
    {
        QApplication application(s_argumentCount, s_arguments);
        application.installEventFilter(this);
        QWidget window, hidden, menu;
        menu.setWindowFlag(Qt::ToolTip);
        window.show();
        menu.show();
        QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
        EnableMouse(false);
        QTRY_COMPARE(m_notices, (Notices{{&window, pbe::kMouseRemoved}}));
        QCOMPARE(QPbeMouseNotifier::GetMousecount(), 0);
        for (const bool enabled : {true, false, true, false, true})
            EnableMouse(enabled);
        QTRY_COMPARE(m_notices.size(), 2);
        QTest::qWait(200);
        QCOMPARE(m_notices, (Notices{{&window, pbe::kMouseRemoved}, {&window, pbe::kMouseAdded}}));
        QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
    }

private:
    using Notices = QList<QPair<QObject *, int>>;

    bool eventFilter(QObject *receiver, QEvent *event) override
    {
        if (receiver->isWidgetType() &&
            (event->type() == pbe::kMouseAdded || event->type() == pbe::kMouseRemoved))
            m_notices.append({receiver, event->type()});
        return false;
    }

    Notices m_notices;
};

QTEST_APPLESS_MAIN(TestApplication)
#include "tst_platform_application.moc"
