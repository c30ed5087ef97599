// SPDX-License-Identifier: Apache-2.0
// What keys type by the layout of the screen: with the events of a framebuffer, which have scan codes and the
// reading of a layout that is always wrong, and with those of an X server that has a layout of its own.
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include "platform/layouts/layout_table.h"
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

// Presses keys of the X server. "50+29 29": Shift with a key, then the key alone. No key twice running:
// without a pause the toolkit takes that for a repetition.
bool PressAtTheServer(const QString &keys)
{
    const QStringList arguments{u"key"_qs, u"--delay"_qs, u"0"_qs};
    return QProcess::execute(u"xdotool"_qs, arguments + keys.split(u' ')) == 0;
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
        Activate(m_edit.get());
        m_edit->installEventFilter(this);
        m_seen.clear();
    }
    void cleanup() { m_edit.reset(); }

    // Every layout of the table, by what its makers print on the keys. The layouts stand behind the
    // characters of a line.
    void LettersAndDigits()
    {
        QFile file(QStringLiteral(LETTERS));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString keys = u"qwertyuiopasdfghjklzxcvbnm1234567890"_qs;
        QSet<QString> seen;
        while (!file.atEnd()) {
            const QStringList line = QString::fromUtf8(file.readLine()).trimmed().split(u' ');
            for (const QString &layout : line.mid(keys.size())) {
                QVERIFY2(Choose(layout.toUInt(nullptr, 16)), qPrintable(layout));
                for (qsizetype i = 0; i < keys.size(); ++i) {
                    if (line[i] != u'¤')
                        QCOMPARE(layout + Typed(keys[i]), layout + line[i]);
                }
                seen.insert(layout);
            }
        }
        QCOMPARE(seen.size(), static_cast<qsizetype>(layouts::All().size()));
    }

    void Typing()
    {
        const struct
        {
            const char *name;
            uint layout;
            QString keys, text;
        } rows[] = {
            {"shift and level 3", 0x407, u"q⌥q⇧q⌥e⇧2⌥<-"_qs, u"q@Q€\"|ß"_qs},
            {"caps lock", 0x407, u"⇪a⇧a;⇧21⇪a"_qs, u"AaÖ\"1a"_qs},
            {"caps lock where the key does not mind it", 0x40c, u"2⇪2⇪2"_qs, u"éÉé"_qs},
            {"caps lock where another key is in its place", 0x411, u"⇪a⇪a"_qs, u"Aa"_qs},
            {"key that the layout does not have", 0x411, u"a`a"_qs, u"aa"_qs},
            {"keypad", 0x407, u"⇭⑦⇭"_qs, u"7"_qs},
            {"dead keys", 0x407, u"=a⇧=e`⇧a= ⇧= "_qs, u"áèÂ'`"_qs},
            {"dead key twice", 0x407, u"==`q"_qs, u"´^q"_qs},
            {"dead keys that do not go together", 0x407, u"=⇧=a"_qs, u"'à"_qs},
            {"dead key behind a caps lock", 0x407, u"=⇪a⇪"_qs, u"Á"_qs},
            {"dead key taken back", 0x407, u"a=⌫a"_qs, u"aa"_qs},
            {"dead key and what moves the cursor", 0x407, u"ab`←c"_qs, u"abc^"_qs},
            {"international", 0x20409, u"'e'c'⇧c⇧'u`adon't⌥5"_qs, u"éçÇüàdon't€"_qs},
            {"portuguese of Brazil", 0x10416, u"[a'o;⇧6a"_qs, u"áõçä"_qs},
            {"several dead keys", 0x408, u"⇧;;i⇧;i;v"_qs, u"ΐϊώ"_qs},
            {"ligature", 0x401, u"bgh"_qs, u"لالا"_qs},
            {"level 5", 0x11009, u"o⎈oo"_qs, u"oøo"_qs},
            {"command by the layout's Latin letter", 0x40c, u"be⌃qx"_qs, u"x"_qs},
            {"command by the place, where there is none", 0x419, u"be⌃ax⏎"_qs, u"ч"_qs},
        };
        for (const auto &row : rows) {
            QVERIFY2(Choose(row.layout), row.name);
            const QString typed = Typed(row.keys);
            QVERIFY2(typed == row.text, qPrintable(QLatin1String(row.name) + u": "_qs + typed));
        }
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
        // A digit of a command has its place on every keyboard.
        Choose(0x40c);
        m_seen.clear();
        Typed(u"⌃1"_qs);
        QCOMPARE(m_seen.value(1), Qt::Key_1);
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
                Activate(&dialog);
                Typed(u"y⌥q"_qs);
                typed = inner.text();
                dialog.accept();
            });
            dialog.exec();
            Activate(m_edit.get());
        });
        Typed(u"y⏎"_qs);
        QCOMPARE(typed, u"z@"_qs);
    }

    void Queries()
    {
        const std::pair<QString, QList<uint>> rows[] = {{{}, {0x407, 0x409, 0x419, 0x401, 0x10416}},
                                                        {u"Az09"_qs, {0x407, 0x409, 0x10416}},
                                                        {u"Käse"_qs, {0x407, 0x10416}},
                                                        {u"êÝ"_qs, {0x407, 0x10416}},
                                                        {u"ПарольЁ"_qs, {0x419}},
                                                        {u"سلام"_qs, {0x401}},
                                                        {u"a\U0001F511"_qs, {}}};
        bool can = false;
        for (const auto &[text, able] : rows) {
            for (const uint layout : rows[0].second) {
                const std::u16string characters = text.toStdU16String();
                QCOMPARE(PbeCanTypeText(layout, characters.data(), characters.size(), &can), kro::kOk);
                QVERIFY2(can == able.contains(layout), qPrintable(text + QString::number(layout, 16)));
            }
        }
        QCOMPARE(PbeCanTypeText(0xABC, u"", 0, &can), kro::kNotFound);
        QVERIFY(!can && !PbeGetKeyboardLayoutName(0xABC));
        QCOMPARE(PbeGetKeyboardLayoutName(0x407), "German");
    }

    void TypingAtAServer()
    {
        if (QGuiApplication::platformName() != u"xcb")
            QSKIP("no X server");
        const struct
        {
            QString server;
            uint layout;
            QString keys, text;
        } rows[] = {// Letters, Shift, AltGr, dead keys, Caps Lock, Num Lock, the keypad's separator.
                    {u"us"_qs, 0x407, u"29 50+52 108+24 21 26 49 50+38 50+11 94 20"_qs, u"zY@éÂ\"<ß"_qs},
                    {u"us"_qs, 0x407, u"66 38 50+38 47 66 38 77 79 91 77"_qs, u"AaÖa7,"_qs},
                    {u"us"_qs, 0x40c, u"24 50+10 11 34 26 108+19 66 11 66 11"_qs, u"a1éê@Éé"_qs},
                    {u"us"_qs, 0x419, u"29 38 50+38 49"_qs, u"нфФё"_qs},
                    // The server's dead keys, level keys and letters are no matter.
                    {u"de"_qs, 0x409, u"49 26 21 29 108+24 50+11 34"_qs, u"`e=yq@["_qs},
                    {u"ru"_qs, 0x407, u"29 47 108+24 49 38 49 65"_qs, u"zö@â^"_qs},
                    {u"fr"_qs, 0x20409, u"24 48 54 50+15 32 108+14"_qs, u"qçô€"_qs},
                    {u"jp"_qs, 0x80a, u"24 47 34 38 108+24"_qs, u"qñá@"_qs},
                    {u"de neo"_qs, 0x406, u"47 48 34 108+11 54"_qs, u"æøå@c"_qs},
                    {u"us,ru"_qs, 0x41f, u"31 34 50+31 38"_qs, u"ığIa"_qs},
                    // Commands.
                    {u"ru"_qs, 0x409, u"24 25 37+38 26"_qs, u"e"_qs},
                    {u"us"_qs, 0x401, u"10 37+38 56 22 56"_qs, u"للا"_qs}};
        for (const auto &row : rows) {
            m_edit->clear();
            const QStringList names = row.server.split(u' ');
            const QStringList arguments{u"-layout"_qs, names[0], u"-variant"_qs, names.value(1)};
            QCOMPARE(QProcess::execute(u"setxkbmap"_qs, arguments), 0);
            QVERIFY(Choose(row.layout) && PressAtTheServer(row.keys));
            QTRY_COMPARE(row.server + m_edit->text(), row.server + row.text);
        }
        for (const bool on : {true, false}) {
            QVERIFY(PressAtTheServer(u"66"_qs));
            QTRY_COMPARE(PbeIsCapsLockOn(), on);
        }
    }

private:
    static void Activate(QWidget *window)
    {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

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
