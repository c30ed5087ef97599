// Keys of an X server that has a layout of its own: pressed there by their codes, read here.
#include <QApplication>
#include <QLineEdit>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

#include "pbe/keyboard.h"
#include "pbe/screen.h"

namespace {

void Choose(const QString &layout)
{
    QPbeScreen::Current()->SetKeyboardLayout(layout);
}

// "50+29 29": Shift with a key, then the key alone. No key twice running: without a pause the toolkit takes that
// for a repetition.
QStringList KeyArguments(const QString &keys)
{
    return QStringList{u"key"_qs, u"--delay"_qs, u"0"_qs} + keys.split(u' ');
}

} // namespace

class TestKeyboardX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_edit = std::make_unique<QLineEdit>();
        m_edit->show();
        m_edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_edit.get()));
    }
    void cleanup() { m_edit.reset(); }

    void Typing_data()
    {
        QTest::addColumn<QString>("server");
        QTest::addColumn<QString>("layout");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *server, const char *layout, const char *keys, const char16_t *text) {
            QTest::addRow("%s over %s: %s", layout, server, keys)
                << QString::fromLatin1(server) << QString::fromLatin1(layout) << QString::fromLatin1(keys)
                << QString::fromUtf16(text);
        };
        // Letters, Shift, AltGr, dead keys, Caps Lock, Num Lock, the keypad's separator.
        row("us", "00000407", "29 50+52 108+24 21 26 49 50+38 50+11 94 20", u"zY@éÂ\"<ß");
        row("us", "00000407", "66 38 50+38 47 66 38 77 79 91 77", u"AaÖa7,");
        row("us", "0000040c", "24 50+10 11 34 26 108+19 66 11 66 11", u"a1éê@Éé");
        row("us", "00000419", "29 38 50+38 49", u"нфФё");
        // The server's dead keys, level keys and letters are no matter.
        row("de", "00000409", "49 26 21 29 108+24 50+11 34", u"`e=yq@[");
        row("ru", "00000407", "29 47 108+24 49 38 49 65", u"zö@â^");
        row("fr", "00020409", "24 48 54 50+15 32 108+14", u"qçô€");
        row("jp", "0000080a", "24 47 34 38 108+24", u"qñá@");
        row("de neo", "00000406", "47 48 34 108+11 54", u"æøå@c");
        row("us,ru", "0000041f", "31 34 50+31 38", u"ığIa");
        // Commands.
        row("ru", "00000409", "24 25 37+38 26", u"e");
        row("us", "00000401", "10 37+38 56 22 56", u"للا");
    }
    void Typing()
    {
        QFETCH(QString, server);
        QFETCH(QString, layout);
        QFETCH(QString, keys);
        QFETCH(QString, text);
        const QStringList names = server.split(u' ');
        QCOMPARE(QProcess::execute(u"setxkbmap"_qs, {u"-layout"_qs, names[0], u"-variant"_qs, names.value(1)}),
                 0);
        Choose(layout);
        QCOMPARE(QProcess::execute(u"xdotool"_qs, KeyArguments(keys)), 0);
        QTRY_COMPARE(m_edit->text(), text);
    }

    void CapsLockIsKnown()
    {
        for (const bool on : {true, false}) {
            QCOMPARE(QProcess::execute(u"xdotool"_qs, KeyArguments(u"66"_qs)), 0);
            QTRY_COMPARE(PbeIsCapsLockOn(), on);
        }
    }

    // Two keys in turn, faster than anybody types, while the layout changes all the time.
    void FastTypingWhileTheLayoutChanges()
    {
        constexpr int kPairs = 200;
        QTimer timer;
        int changes = 0;
        connect(&timer, &QTimer::timeout, this,
                [&changes] { Choose(++changes % 2 ? u"00000407"_qs : u"00000409"_qs); });
        timer.start(1);
        QProcess typist;
        typist.start(u"xdotool"_qs, KeyArguments(u"38 29"_qs + u" 38 29"_qs.repeated(kPairs - 1)));
        QTRY_COMPARE(m_edit->text().size(), 2 * kPairs);
        QTRY_COMPARE(typist.state(), QProcess::NotRunning);
        QTest::qWait(50);
        QVERIFY2(QRegularExpression(u"^(a[yz]){%1}$"_qs.arg(kPairs)).match(m_edit->text()).hasMatch(),
                 qPrintable(m_edit->text()));
        QVERIFY(m_edit->text().contains(u'z') && m_edit->text().contains(u'y'));
    }

private:
    std::unique_ptr<QLineEdit> m_edit;
};

QTEST_MAIN(TestKeyboardX11)
#include "tst_platform_keyboard_x11.moc"
