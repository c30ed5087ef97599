// SPDX-License-Identifier: Apache-2.0
#include "tests/support/fake_pbe.h"

#include <poll.h>

#include <QDir>

#include "pbe/application.h"
#include "pbe/counter.h"
#include "pbe/files.h"
#include "pbe/keyboard.h"
#include "pbe/log.h"
#include "pbe/mouse_notifier.h"
#include "pbe/screen.h"
#include "tests/support/test_files.h"

using fake_pbe::Now;

// Made on first use: the module logs before main.
fake_pbe::State &fake_pbe::Now()
{
    static State state;
    return state;
}

void fake_pbe::Reset()
{
    Now() = State();
    Now().root = std::make_unique<QTemporaryDir>();
    QDir(Now().root->path()).mkpath(QStringLiteral("pba/help"));
    PbeSetFileRoot(Now().root->path().toUtf8());
}

QByteArray fake_pbe::LogText()
{
    QByteArray log;
    for (const Message &message : Now().messages)
        log += message.text;
    return log;
}

void fake_pbe::SetKeyboard(std::uint32_t layout, bool capsLock)
{
    Now().layout = layout;
    Now().capsLock = capsLock;
}

QString fake_pbe::FileName(const char16_t *path)
{
    kro::string_t name;
    PbeGetFilePath(path, &name);
    return QString::fromUtf8(name.Data());
}

void fake_pbe::WriteFile(const char16_t *path, const QByteArray &bytes)
{
    ::WriteFile(FileName(path), bytes);
}

void PbeLogMessage(std::uint32_t severity, std::uint32_t kind, const char *tag, const char *text)
{
    Now().messages.append({severity, kind, tag, text});
}

std::uint32_t PbeGetLogSeverity()
{
    return Now().severity;
}

std::uint64_t PbeGetPerformanceCounterValue()
{
    return ++Now().counter;
}

std::uint32_t PbeGetKeyboardLayout()
{
    return Now().layout;
}

bool PbeIsCapsLockOn()
{
    return Now().capsLock;
}

const char *PbeGetKeyboardLayoutName(std::uint32_t layout)
{
    return layout == 0x0407 ? "German" : nullptr;
}

// German types all but what is Cyrillic.
kro::result_t PbeCanTypeText(std::uint32_t layout, const char16_t *text, std::size_t length, bool *canType)
{
    *canType = QStringView(text, static_cast<qsizetype>(length)).toString().toLatin1().indexOf('?') < 0;
    return layout == 0x0407 ? kro::kOk : kro::kNotFound;
}

void PbeSetBusy(bool busy)
{
    Now().calls.append(busy ? "busy on" : "busy off");
}

// The answer may come from another thread of the test.
bool PbeAwait(int descriptor)
{
    pollfd waiting{descriptor, POLLIN, 0};
    return descriptor >= 0 && poll(&waiting, 1, -1) == 1 && (waiting.revents & (POLLIN | POLLHUP)) != 0;
}

void PbeShowWaitSign(bool show)
{
    Now().calls.append(show ? "wait sign on" : "wait sign off");
}

void PbeWatch(int descriptor, void (*callback)(void *), void *context)
{
    Now().watches[descriptor] = callback ? std::function<void()>([=] { callback(context); }) : nullptr;
}

void PbeTellTokens(bool added)
{
    Now().calls.append(added ? "tokens added" : "tokens removed");
}

void PbeRequestStop()
{
    Now().calls.append("stop");
}

QPbeScreen *QPbeScreen::Current()
{
    static QPbeScreen screen;
    return &screen;
}

void QPbeScreen::TurnOnScreenRepaint()
{
    Now().calls.append("repaint on");
}

void QPbeScreen::TurnOffScreenRepaint()
{
    Now().calls.append("repaint off");
}

void QPbeScreen::SetKeyboardLayout(const QString &identifier)
{
    Now().calls.append("keyboard layout " + identifier.toLatin1());
}

void QPbeScreen::SetPointerVisible(bool visible)
{
    Now().calls.append(visible ? "pointer shown" : "pointer hidden");
}

int QPbeMouseNotifier::GetMousecount()
{
    return Now().mouseCount;
}
