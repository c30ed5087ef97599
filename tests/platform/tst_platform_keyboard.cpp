// What keys type by the layout of the screen, with the events of a framebuffer: scan codes, and the reading
// of a layout that is always wrong.
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <fcntl.h>
#include <linux/kd.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include "layouts/layout_table.h"
#include "lock_lights.h"
#include "pbe/keyboard.h"
#include "pbe/screen.h"

namespace {

constexpr quint32 kBackspace = 22, kReturn = 36, kShift = 50;

// A character stands for the key that has it on a keyboard of the United States, a sign for another key.
quint32 KeyOf(QChar key)
{
    const QString places = u"1234567890-=  qwertyuiop[]  asdfghjkl;'` \\zxcvbnm,./     "_qs;
    const QHash<QChar, quint32> others{{u'<', 94},  {u'⇧', kShift},  {u'⌥', 108},        {u'⌃', 37},
                                       {u'⎈', 105}, {u'⇪', 66},      {u'⇭', 77},         {u'⑦', 79},
                                       {u' ', 65},  {u'⏎', kReturn}, {u'⌫', kBackspace}, {u'←', 113}};
    return others.value(key, static_cast<quint32>(10 + places.indexOf(key)));
}

// What the framebuffer's screen makes of some keys.
struct Named
{
    Qt::Key key;
    Qt::KeyboardModifier modifier = Qt::NoModifier;
};
const QHash<quint32, Named> kNamed{{kShift, {Qt::Key_Shift, Qt::ShiftModifier}},
                                   {37, {Qt::Key_Control, Qt::ControlModifier}},
                                   {105, {Qt::Key_Control, Qt::ControlModifier}},
                                   {108, {Qt::Key_Alt, Qt::AltModifier}},
                                   {66, {Qt::Key_CapsLock}},
                                   {77, {Qt::Key_NumLock}},
                                   {79, {Qt::Key_Home}},
                                   {kReturn, {Qt::Key_Return}},
                                   {kBackspace, {Qt::Key_Backspace}},
                                   {113, {Qt::Key_Left}}};

bool Choose(std::uint32_t layout)
{
    QPbeScreen::Current()->SetKeyboardLayout(u"%1"_qs.arg(layout, 8, 16, QChar(u'0')));
    return PbeGetKeyboardLayout() == layout;
}

} // namespace

class TestKeyboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_edit = std::make_unique<QLineEdit>();
        m_edit->show();
        m_edit->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_edit.get()));
        m_edit->installEventFilter(this);
        m_seen.clear();
    }
    void cleanup() { m_edit.reset(); }

    // Every layout of the table, by what its makers print on the keys.
    void LettersAndDigits()
    {
        QFile file(QFINDTESTDATA("letters.txt"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString keys = u"qwertyuiopasdfghjklzxcvbnm1234567890"_qs;
        auto layout = layouts::All().begin();
        while (!file.atEnd()) {
            const QStringList texts = QString::fromUtf8(file.readLine()).trimmed().split(u' ');
            QCOMPARE(texts.size(), 1 + keys.size());
            QCOMPARE(texts[0].toUInt(nullptr, 16), layout->id);
            QVERIFY2(Choose(layout++->id), qPrintable(texts[0]));
            for (qsizetype i = 0; i < keys.size(); ++i) {
                if (texts[i + 1] != u'¤')
                    QCOMPARE(texts[0] + Typed(keys[i]), texts[0] + texts[i + 1]);
            }
        }
        QVERIFY(layout == layouts::All().end());
    }

    void Typing_data()
    {
        QTest::addColumn<uint>("layout");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, uint layout, const char16_t *keys, const char16_t *text) {
            QTest::newRow(name) << layout << QString::fromUtf16(keys) << QString::fromUtf16(text);
        };
        row("shift and level 3", 0x407, u"q⌥q⇧q⌥e⇧2⌥<-", u"q@Q€\"|ß");
        row("caps lock", 0x407, u"⇪a⇧a;⇧21⇪a", u"AaÖ\"1a");
        row("caps lock where the key does not mind it", 0x40c, u"2⇪2⇪2", u"éÉé");
        row("caps lock where another key is in its place", 0x411, u"⇪a⇪a", u"Aa");
        row("key that the layout does not have", 0x411, u"a`a", u"aa");
        row("keypad", 0x407, u"⇭⑦⇭", u"7");
        row("dead keys", 0x407, u"=a⇧=e`⇧a= ⇧= ", u"áèÂ'`");
        row("dead key twice", 0x407, u"==`q", u"´^q");
        row("dead keys that do not go together", 0x407, u"=⇧=a", u"'à");
        row("dead key behind a caps lock", 0x407, u"=⇪a⇪", u"Á");
        row("dead key taken back", 0x407, u"a=⌫a", u"aa");
        row("dead key and what moves the cursor", 0x407, u"ab`←c", u"abc^");
        row("international", 0x20409, u"'e'c'⇧c⇧'u`adon't⌥5", u"éçÇüàdon't€");
        row("portuguese of Brazil", 0x10416, u"[a'o;⇧6a", u"áõçä");
        row("several dead keys", 0x408, u"⇧;;i⇧;i;v", u"ΐϊώ");
        row("ligature", 0x401, u"bgh", u"لالا");
        row("level 5", 0x11009, u"o⎈oo", u"oøo");
    }
    void Typing()
    {
        QFETCH(uint, layout);
        QFETCH(QString, keys);
        QVERIFY(Choose(layout));
        QTEST(Typed(keys), "text");
    }

    // At the change a key is held, Shift is held and a dead key waits.
    void ChangeOfLayoutLosesNoKey()
    {
        Choose(0x407);
        for (const quint32 key : {KeyOf(u'y'), KeyOf(u'='), kShift})
            Send(QEvent::KeyPress, key);
        QVERIFY(Choose(0x409));
        Send(QEvent::KeyPress, KeyOf(u'y'), true);
        Send(QEvent::KeyPress, KeyOf(u'e'));
        for (const quint32 key : {KeyOf(u'y'), KeyOf(u'='), KeyOf(u'e'), kShift})
            Send(QEvent::KeyRelease, key);
        QCOMPARE(m_edit->text(), u"zzÉ"_qs);
        QCOMPARE(m_seen, (QList<int>{Qt::Key_Z, Qt::Key_Dead_Acute, Qt::Key_Shift, Qt::Key_Z, Qt::Key_E,
                                     -Qt::Key_Z, -Qt::Key_Dead_Acute, -Qt::Key_E, -Qt::Key_Shift}));
        QVERIFY(!Choose(0x0ABC0407));
        QPbeScreen::Current()->SetKeyboardLayout(u"German"_qs);
        QCOMPARE(PbeGetKeyboardLayout(), 0x409U);
        QCOMPARE(Typed(u"y"_qs), u"y"_qs);
    }

    // Commands go by the layout's Latin letters, elsewhere by the place; what has no scan code is left alone.
    void CommandsAndOtherKeys()
    {
        Choose(0x40c);
        QCOMPARE(Typed(u"be⌃qx"_qs), u"x"_qs);
        Choose(0x419);
        QCOMPARE(Typed(u"be⌃ax⏎"_qs), u"ч"_qs);
        m_seen.clear();
        Typed(u"⌃1⌥1"_qs);
        QCOMPARE(m_seen.value(1), Qt::Key_1);
        m_edit->clear();
        QTest::keyClicks(m_edit.get(), u"Az"_qs);
        QTest::keyClick(m_edit->windowHandle(), Qt::Key_Q, Qt::NoModifier);
        QCOMPARE(m_edit->text(), u"Azq"_qs);
    }

    // The key that opens it has not returned when the next ones come.
    void DialogThatAKeyOpensIsServed()
    {
        Choose(0x407);
        QString typed;
        connect(m_edit.get(), &QLineEdit::returnPressed, this, [this, &typed] {
            QDialog dialog;
            QLineEdit inner(&dialog);
            QTimer::singleShot(0, &dialog, [&] {
                dialog.activateWindow();
                QVERIFY(QTest::qWaitForWindowActive(&dialog));
                Typed(u"y⌥q"_qs);
                typed = inner.text();
                dialog.accept();
            });
            dialog.exec();
            m_edit->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(m_edit.get()));
        });
        Typed(u"y⏎"_qs);
        QCOMPARE(typed, u"z@"_qs);
    }

    // On the console itself, where one may.
    void LightsFollowTheLocks()
    {
        const int console = open("/dev/tty0", O_RDWR | O_NOCTTY);
        char before = 0;
        if (ioctl(console, KDGKBLED, &before) != 0)
            QSKIP("no console");
        const auto lit = [console] {
            char lights = 0;
            return ioctl(console, KDGETLED, &lights) == 0 ? int(lights) : -1;
        };
        for (const int locks : {0, LED_NUM}) {
            ioctl(console, KDSKBLED, locks);
            pbe::LockLights lights;
            QCOMPARE(lights.StartsWithNumLock(), locks == LED_NUM);
            lights.Show(true, false);
            QTRY_COMPARE(lit(), LED_CAP);
            lights.Show(true, true);
            QTRY_COMPARE(lit(), LED_CAP | LED_NUM);
        }
        QTRY_COMPARE(lit(), LED_NUM);
        ioctl(console, KDSKBLED, before);
        close(console);
    }

    void Queries_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<uint>>("layouts");
        QTest::newRow("nothing") << QString() << QList<uint>{0x407, 0x409, 0x419, 0x401, 0x10416};
        QTest::newRow("letters") << u"Az09"_qs << QList<uint>{0x407, 0x409, 0x10416};
        QTest::newRow("umlaut") << u"Käse"_qs << QList<uint>{0x407, 0x10416};
        QTest::newRow("dead keys") << u"êÝ"_qs << QList<uint>{0x407, 0x10416};
        QTest::newRow("cyrillic") << u"ПарольЁ"_qs << QList<uint>{0x419};
        QTest::newRow("ligature") << u"سلام"_qs << QList<uint>{0x401};
        QTest::newRow("on no key") << u"a\U0001F511"_qs << QList<uint>{};
    }
    void Queries()
    {
        QFETCH(QString, text);
        QList<uint> able;
        for (const uint layout : {0x407U, 0x409U, 0x419U, 0x401U, 0x10416U}) {
            bool can = false;
            const auto *characters = reinterpret_cast<const char16_t *>(text.utf16());
            QCOMPARE(PbeCanTypeText(layout, characters, static_cast<std::size_t>(text.size()), &can),
                     kro::kOk);
            if (can)
                able.append(layout);
        }
        QTEST(able, "layouts");
        bool can = true;
        QCOMPARE(PbeCanTypeText(0xABC, u"", 0, &can), kro::kNotFound);
        QVERIFY(!can && !PbeGetKeyboardLayoutName(0xABC));
        QCOMPARE(PbeGetKeyboardLayoutName(0x407), "German");
    }

private:
    // As the framebuffer's screen sends it.
    void Send(QEvent::Type type, quint32 key, bool repeat = false)
    {
        const Named named = kNamed.value(key, {Qt::Key_Q});
        QKeyEvent event(type, named.key, m_held, key, 0, 0, named.key == Qt::Key_Q ? u"q"_qs : QString(),
                        repeat);
        QCoreApplication::sendEvent(QGuiApplication::focusWindow(), &event);
        m_held.setFlag(named.modifier, type == QEvent::KeyPress);
    }

    // A modifier is held for the key behind it. Empties the line before.
    QString Typed(const QString &keys)
    {
        m_edit->clear();
        QList<quint32> held;
        for (const QChar key : keys) {
            held.append(KeyOf(key));
            Send(QEvent::KeyPress, held.last());
            if (kNamed.value(held.last(), {Qt::Key_Q}).modifier == Qt::NoModifier) {
                while (!held.isEmpty())
                    Send(QEvent::KeyRelease, held.takeLast());
            }
        }
        return m_edit->text();
    }

    // Keys that the line has got; released ones are negative.
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease)
            m_seen.append((event->type() == QEvent::KeyPress ? 1 : -1) *
                          static_cast<QKeyEvent *>(event)->key());
        return false;
    }

    std::unique_ptr<QLineEdit> m_edit;
    Qt::KeyboardModifiers m_held;
    QList<int> m_seen;
};

QTEST_MAIN(TestKeyboard)
#include "tst_platform_keyboard.moc"
