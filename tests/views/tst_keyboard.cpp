// SPDX-License-Identifier: Apache-2.0
// Keyboard language and layout: the hot keys as rules and in the running view, selectors and text direction.
#include <QMenu>
#include <QWindow>

#include "module/settings/paths.h"
#include "settings_format/settings_encoder.h"
#include "tests/support/test_main.h"
#include "module/views/hotkeys.h"
#include "module/views/screen_traits.h"
#include "tests/views/session.h"
#include "module/widgets/pba_combo_box.h"
#include "module/widgets/pba_page_stack.h"
#include "module/widgets/response_input.h"

// Languages are switched by Alt+Shift, layouts by Alt+Space; Alt+1 and Ctrl+Shift+2 jump.
static const pba::ConstantSettingsRecord kSettings{
    u"pc",
    {{{1033, u"English", {{0x409, u"US", {0x1, 0x31}}, {0x809, u"U&K", {}}}},
      {1037, u"Hebrew", {{0x40d, u"Hebrew", {}}}},
      {1036, u"French", {{0x40c, u"French", {}}, {0x1040c, u"AZERTY", {0x6, 0x32}}}}},
     {0x1, 0x10},
     {0x1, 0x20},
     {0x0, 0x14}}};
static constexpr Qt::KeyboardModifiers kNone, A = Qt::AltModifier, C = Qt::ControlModifier,
                                              S = Qt::ShiftModifier;

// Sends a key as the window system does.
static void Send(QEvent::Type type, int key, Qt::KeyboardModifiers held, bool repeated = false)
{
    const QWidget *message = QApplication::activeModalWidget();
    const QString text = key < 0x80 ? QString(QChar(key)) : QString();
    QKeyEvent event(type, key, held, text, repeated);
    QCoreApplication::sendEvent((message ? message : Session::Dialog())->windowHandle(), &event);
}

// What the selectors show after a hot key, the layout in force, and the direction of the fields.
static QString Keyboard(int key = 0, Qt::KeyboardModifiers held = {})
{
    if (key) {
        Send(QEvent::KeyPress, key, held);
        Send(QEvent::KeyRelease, key, held);
    }
    const QByteArray calls = fake_pbe::Calls().join();
    const QByteArray layout = calls.mid(calls.lastIndexOf("layout ") + 7, 8);
    return Session::Find("languageSelector")->text() + u' ' + Session::Find("layoutSelector")->text() + u' ' +
           QString::fromLatin1(layout) +
           (Session::Field("newPassword")->layoutDirection() == Qt::RightToLeft ? u" mirrored"_qs
                                                                                : QString());
}

// When their page is first shown, which is when it is styled, and not before. But a response keeps the order
// of its groups, in which it is read out.
static void FieldsThatComeLaterAreMirroredToo()
{
    auto *pages = Session::Find<PbaPageStack>("stackedWidget");
    auto *input = Session::Find<ResponseInput>("responseInput");
    input->StartInput(nullptr);
    auto *line = input->findChildren<QLineEdit *>().last();
    QVERIFY(line->font().family() != u"DejaVu Sans Mono");
    pages->ShowPage(pba::kScreenResponse);
    QCOMPARE(line->font().family(), u"DejaVu Sans Mono");
    QCOMPARE(line->layoutDirection(), Qt::RightToLeft);
    line->setText(u"1234.ABCD"_qs);
    const auto placeOf = [line](int position) {
        line->setCursorPosition(position);
        return line->inputMethodQuery(Qt::ImCursorRectangle).toRect().x();
    };
    QVERIFY(placeOf(0) < placeOf(9));
    pages->ShowPage(pba::kScreenLoginByPassword);
}

class TestKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void Matching()
    {
        const pba::Hotkey altShift{1, 0x10}, ctrl1{2, 0x31}, ctrlShift2{6, 0x32};
        const struct
        {
            const char *name;
            pba::Hotkey hotkey;
            Qt::Key key;
            Qt::KeyboardModifiers held;
            bool matches;
        } rows[] = {{"Shift last", altShift, Qt::Key_Shift, A, true},
                    {"Alt last, counted as held", altShift, Qt::Key_Alt, A | S, true},
                    {"Alt alone", altShift, Qt::Key_Alt, A, false},
                    {"a third modifier", altShift, Qt::Key_Shift, A | C, false},
                    {"a third modifier, Alt last", altShift, Qt::Key_Alt, S | C, false},
                    {"AltGr is not Alt", altShift, Qt::Key_AltGr, S, false},
                    {"on the number pad", ctrl1, Qt::Key_1, C | Qt::KeypadModifier, true},
                    {"with one modifier too many", ctrl1, Qt::Key_1, C | A, false},
                    {"ordinary key, modifier last", ctrl1, Qt::Key_Control, kNone, false},
                    {"as typed with Shift", ctrlShift2, Qt::Key_At, C | S, true},
                    {"Tab back", {4, 0x09}, Qt::Key_Backtab, S, true},
                    {"the main Return", {2, 0x0D}, Qt::Key_Return, C, true},
                    {"a digit of the number pad", {0, 0x69}, Qt::Key_9, kNone, true},
                    {"a function key", {0, 0x87}, Qt::Key_F24, kNone, true},
                    {"none", {0, 0xFF}, Qt::Key_unknown, kNone, false}};
        for (const auto &row : rows) {
            const auto key = static_cast<std::uint32_t>(row.key);
            const pba::ToolkitHotkey hotkey = pba::ConvertHotkey(row.hotkey);
            QVERIFY2(pba::MatchesHotkey(hotkey, key, row.held.toInt()) == row.matches, row.name);
        }
    }

    void SelectorsAndHotkeys()
    {
        Session session;
        const std::string settings = pba::EncodeSettings(kSettings);
        fake_pbe::WriteFile(pba::kSettingsPath, QByteArray::fromStdString(settings));
        session.Play([] {
            const auto choose = [](const char *selector, int index) {
                Session::Find(selector)->menu()->actions()[index]->trigger();
                return Keyboard();
            };
            QTRY_COMPARE(Session::FocusName(), u"loginDomain");
            QCOMPARE(Keyboard(), u"English US 00000409");
            QVERIFY(!fake_pbe::LogText().contains("OnSetKeyboardLanguage"));
            QCOMPARE(choose("layoutSelector", 1), u"English U&&K 00000809");
            QCOMPARE(choose("languageSelector", 2), u"French French 0000040c");
            QCOMPARE(Keyboard(Qt::Key_Space, A), u"French AZERTY 0001040c");
            // Each language has kept its layout; the first follows the last.
            QCOMPARE(Keyboard(Qt::Key_Shift, A), u"English U&&K 00000809");
            QCOMPARE(Keyboard(Qt::Key_Alt, S), u"Hebrew Hebrew 0000040d mirrored");
            QCOMPARE(Keyboard(Qt::Key_Space, A), u"Hebrew Hebrew 0000040d mirrored");
            FieldsThatComeLaterAreMirroredToo();
            QCOMPARE(Keyboard(Qt::Key_Shift, A), u"French AZERTY 0001040c");
            Session::Field("loginDomain")->setFocus();
            QCOMPARE(Keyboard(Qt::Key_1, A), u"English US 00000409");
            QCOMPARE(Keyboard(Qt::Key_At, C | S), u"French AZERTY 0001040c");
            QVERIFY(fake_pbe::LogText().contains("Keyboard layout index: 1, id: 66572\r\n"));
            for (const auto &message : fake_pbe::Now().messages)
                QVERIFY(message.severity == 900 || !message.text.startsWith("Language index: "));

            // The step waits for the release, happens once however long the keys are held, and not when
            // another was pressed meanwhile.
            Send(QEvent::KeyPress, Qt::Key_Space, A);
            Send(QEvent::KeyRelease, Qt::Key_Space, A, true);
            QCOMPARE(Keyboard(), u"French AZERTY 0001040c");
            QCOMPARE(Keyboard(Qt::Key_X, C), u"French AZERTY 0001040c");
            // Nothing of it was typed.
            QCOMPARE(Session::Field("loginDomain")->text(), QString());
            Boxes boxes({u"button3"_qs});
            QString behindMessage;
            boxes.whileStanding = [&] { behindMessage = Keyboard(Qt::Key_Shift, A); };
            Session::Click("loginButton");
            QCOMPARE(behindMessage, u"English US 00000409");
        });
    }
};

PBA_REGISTER_TEST(TestKeyboard);
#include "tst_keyboard.moc"
