// Pointing devices on the framebuffer, with devices that udev only believes in.
#include <umockdev.h>
// The toolkit's names collide with this header's when it comes second.
#include <QTest>

#include "notice_counter.h"
#include "pbe/mouse_notifier.h"

class TestUdev : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(umockdev_in_mock_environment()); }
    void cleanupTestCase() { g_object_unref(m_testbed); }
    void CountsPointingDevices_data();
    void CountsPointingDevices();
    void DeviceComesAndGoes();

private:
    QByteArray Add(const char *node, const char *property) const
    {
        gchar *path = umockdev_testbed_add_device(m_testbed, "input", node, nullptr, nullptr, "ID_INPUT", "1",
                                                  property, "1", nullptr);
        const QByteArray result(path);
        g_free(path);
        return result;
    }
    void Remove(const QByteArray &path) const
    {
        umockdev_testbed_uevent(m_testbed, path.constData(), "remove");
        umockdev_testbed_remove_device(m_testbed, path.constData());
    }

    UMockdevTestbed *m_testbed = umockdev_testbed_new();
};

void TestUdev::CountsPointingDevices_data()
{
    QTest::addColumn<QByteArray>("node");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("count");
    const auto row = [](const char *node, const char *property, int count) {
        QTest::addRow("%s %s", node, property) << QByteArray(node) << QByteArray(property) << count;
    };
    row("event1", "ID_INPUT_MOUSE", 1);
    row("event1", "ID_INPUT_TOUCHPAD", 1);
    row("event1", "ID_INPUT_TOUCHSCREEN", 1);
    row("event1", "ID_INPUT_TABLET", 1);
    row("event1", "ID_INPUT_POINTINGSTICK", 1);
    row("event1", "ID_INPUT_KEYBOARD", 0);
    row("mouse1", "ID_INPUT_MOUSE", 0);
}

void TestUdev::CountsPointingDevices()
{
    QFETCH(QByteArray, node);
    QFETCH(QByteArray, property);
    const QByteArray path = Add(node.constData(), property.constData());
    QTEST(QPbeMouseNotifier::GetMousecount(), "count");
    Remove(path);
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 0);
}

void TestUdev::DeviceComesAndGoes()
{
    // The watch runs, and has told what the counting left to tell.
    QTest::qWait(300);
    NoticeCounter window;
    window.show();
    const QByteArray mouse = Add("event1", "ID_INPUT_MOUSE");
    QTRY_COMPARE(window.notices, QList<int>{pbe::kMouseAdded});
    const QByteArray keyboard = Add("event2", "ID_INPUT_KEYBOARD");
    const QByteArray pad = Add("event3", "ID_INPUT_TOUCHPAD");
    QTRY_COMPARE(window.notices, (QList<int>{pbe::kMouseAdded, pbe::kMouseAdded}));
    QCOMPARE(QPbeMouseNotifier::GetMousecount(), 2);
    for (const QByteArray &path : {mouse, pad})
        Remove(path);
    QTRY_COMPARE(window.notices.size(), 3);
    QCOMPARE(window.notices.last(), pbe::kMouseRemoved);
    Remove(keyboard);
    QTest::qWait(200);
    QCOMPARE(window.notices.size(), 3);
}

QTEST_MAIN(TestUdev)
#include "tst_platform_udev.moc"
