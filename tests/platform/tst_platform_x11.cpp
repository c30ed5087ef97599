// What the platform asks of the X server, checked at the server by a second connection where it tells.
#include <cstdlib>
#include <memory>

#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include "notice_counter.h"
#include "pbe/application.h"
#include "pbe/mouse_notifier.h"
#include "pbe/screen.h"

namespace {

int s_argumentCount = 1;
char s_program[] = "tst";
char *s_arguments[] = {s_program, nullptr};

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> Own(Reply *reply)
{
    return {reply, &std::free};
}

// How often this application has hidden the pointer: the server refuses to show what its client did not hide.
int TimesHidden()
{
    auto *connection = qApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    int times = 0;
    while (!Own(xcb_request_check(connection, xcb_xfixes_show_cursor_checked(connection, root))))
        ++times;
    for (int again = 0; again < times; ++again)
        xcb_xfixes_hide_cursor(connection, root);
    return times;
}

// Another program at the same server.
class OtherClient
{
public:
    OtherClient()
        : m_connection(xcb_connect(nullptr, nullptr))
    {
        Own(xcb_input_xi_query_version_reply(m_connection, xcb_input_xi_query_version(m_connection, 2, 2),
                                             nullptr));
        Own(xcb_xfixes_query_version_reply(m_connection, xcb_xfixes_query_version(m_connection, 4, 0),
                                           nullptr));
    }
    ~OtherClient() { xcb_disconnect(m_connection); }

    quint32 CursorSerial() const
    {
        const auto cookie = xcb_xfixes_get_cursor_image(m_connection);
        const auto reply = Own(xcb_xfixes_get_cursor_image_reply(m_connection, cookie, nullptr));
        return reply ? reply->cursor_serial : 0;
    }

    void EnableMouse(bool enabled) const
    {
        // One byte counts; the request is sent in units of four.
        const std::uint8_t value[4] = {enabled};
        const auto cookie =
            xcb_input_xi_change_property_checked(m_connection, Mouse(), XCB_PROP_MODE_REPLACE, 8,
                                                 Atom("Device Enabled"), XCB_ATOM_INTEGER, 1, value);
        QVERIFY(!Own(xcb_request_check(m_connection, cookie)));
    }

private:
    xcb_atom_t Atom(QByteArrayView name) const
    {
        const auto cookie = xcb_intern_atom(m_connection, false, name.size(), name.data());
        return Own(xcb_intern_atom_reply(m_connection, cookie, nullptr))->atom;
    }

    xcb_input_device_id_t Mouse() const
    {
        const auto cookie = xcb_input_xi_query_device(m_connection, XCB_INPUT_DEVICE_ALL);
        const auto reply = Own(xcb_input_xi_query_device_reply(m_connection, cookie, nullptr));
        auto device = xcb_input_xi_query_device_infos_iterator(reply.get());
        for (; device.rem > 0; xcb_input_xi_device_info_next(&device)) {
            const QByteArray name(xcb_input_xi_device_info_name(device.data), device.data->name_len);
            if (name == "Xvfb mouse")
                return device.data->deviceid;
        }
        return 0;
    }

    xcb_connection_t *m_connection;
};

} // namespace

class TestX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_application.reset(); }
    void PointerIsHiddenOnce();
    void WaitCursorShowsAtOnceOverLineEdits();
    void MouseComesAndGoes();
    void ChangeBeforeTheWatchIsTold();
    void StormIsOneNotice();

private:
    std::unique_ptr<QApplication> m_application;
    OtherClient m_other;
};

void TestX11::init()
{
    m_application = std::make_unique<QApplication>(s_argumentCount, s_arguments);
}

void TestX11::PointerIsHiddenOnce()
{
    QPbeScreen *screen = QPbeScreen::Current();
    QCOMPARE(TimesHidden(), 0);
    screen->SetPointerVisible(false);
    screen->SetPointerVisible(false);
    QCOMPARE(TimesHidden(), 1);
    screen->SetPointerVisible(true);
    screen->SetPointerVisible(true);
    QCOMPARE(TimesHidden(), 0);
    screen->SetPointerVisible(false);
    cleanup();
    init();
    QCOMPARE(TimesHidden(), 0);
}

void TestX11::WaitCursorShowsAtOnceOverLineEdits()
{
    QLineEdit edit;
    edit.setGeometry(0, 0, 300, 200);
    edit.show();
    QVERIFY(QTest::qWaitForWindowExposed(&edit));
    const quint32 rootCursor = m_other.CursorSerial();
    QCursor::setPos(edit.mapToGlobal(QPoint(100, 100)));
    QTRY_VERIFY(m_other.CursorSerial() != rootCursor);
    QTest::qWait(100);
    const quint32 editCursor = m_other.CursorSerial();
    PbeSetBusy(true);
    QVERIFY(m_other.CursorSerial() != editCursor);
    PbeSetBusy(false);
    QTRY_COMPARE(m_other.CursorSerial(), editCursor);
}

void TestX11::MouseComesAndGoes()
{
    NoticeCounter window;
    NoticeCounter hidden;
    NoticeCounter menu;
    menu.setWindowFlag(Qt::ToolTip);
    window.show();
    menu.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
    // The watch runs.
    QTest::qWait(300);
    m_other.EnableMouse(false);
    QTRY_COMPARE(window.notices, QList<int>{pbe::kMouseRemoved});
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 0);
    m_other.EnableMouse(true);
    QTRY_COMPARE(window.notices, (QList<int>{pbe::kMouseRemoved, pbe::kMouseAdded}));
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
    QVERIFY(hidden.notices.isEmpty());
    QVERIFY(menu.notices.isEmpty());
}

void TestX11::ChangeBeforeTheWatchIsTold()
{
    NoticeCounter window;
    window.show();
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
    m_other.EnableMouse(false);
    QTRY_COMPARE(window.notices, QList<int>{pbe::kMouseRemoved});
    m_other.EnableMouse(true);
    QTRY_COMPARE(window.notices.size(), 2);
}

void TestX11::StormIsOneNotice()
{
    NoticeCounter window;
    window.show();
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 1);
    QTest::qWait(300);
    for (const bool enabled : {false, true, false, true, false})
        m_other.EnableMouse(enabled);
    QTest::qWait(200);
    QCOMPARE(window.notices, QList<int>{pbe::kMouseRemoved});
    m_other.EnableMouse(true);
}

QTEST_APPLESS_MAIN(TestX11)
#include "tst_platform_x11.moc"
