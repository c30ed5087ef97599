#include "fake_pbe.h"

#include <memory>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "pbe/application.h"
#include "pbe/counter.h"
#include "pbe/files.h"
#include "pbe/keyboard.h"
#include "pbe/log.h"
#include "pbe/mouse_notifier.h"
#include "pbe/screen.h"

namespace {

struct State
{
    std::vector<fake_pbe::Message> messages;
    std::uint32_t severity = 1000;
    int mouseCount = 0;
    std::uint64_t counter = 0;
    std::uint32_t layout = 0;
    bool capsLock = false;
    bool repaintOn = true;
    QList<QByteArray> calls;
    std::unique_ptr<QTemporaryDir> root;
};

// Made on first use: the module logs before main.
State &Fake()
{
    static State state;
    return state;
}

} // namespace

void fake_pbe::Reset()
{
    Fake() = State();
    Fake().root = std::make_unique<QTemporaryDir>();
    QDir(Fake().root->path()).mkpath(QStringLiteral("pba/help"));
    PbeSetFileRoot(Fake().root->path().toUtf8());
}

const std::vector<fake_pbe::Message> &fake_pbe::Messages()
{
    return Fake().messages;
}

QByteArray fake_pbe::LogText()
{
    QByteArray log;
    for (const Message &message : Messages())
        log += message.text;
    return log;
}

void fake_pbe::SetSeverity(std::uint32_t severity)
{
    Fake().severity = severity;
}

void fake_pbe::SetMouseCount(int count)
{
    Fake().mouseCount = count;
}

void fake_pbe::SetKeyboard(std::uint32_t layout, bool capsLock)
{
    Fake().layout = layout;
    Fake().capsLock = capsLock;
}

bool fake_pbe::IsRepaintOn()
{
    return Fake().repaintOn;
}

const QList<QByteArray> &fake_pbe::Calls()
{
    return Fake().calls;
}

QString fake_pbe::FileName(const char16_t *path)
{
    kro::string_t name;
    PbeGetFilePath(path, &name);
    return QString::fromUtf8(name.Data());
}

void fake_pbe::WriteFile(const char16_t *path, const QByteArray &bytes)
{
    QFile file(FileName(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void PbeLogMessage(std::uint32_t severity, std::uint32_t kind, const char *tag, const char *text)
{
    Fake().messages.push_back({severity, kind, tag, text});
}

std::uint32_t PbeGetLogSeverity()
{
    return Fake().severity;
}

std::uint64_t PbeGetPerformanceCounterValue()
{
    return ++Fake().counter;
}

std::uint32_t PbeGetKeyboardLayout()
{
    return Fake().layout;
}

bool PbeIsCapsLockOn()
{
    return Fake().capsLock;
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
    Fake().calls.append(busy ? "busy on" : "busy off");
}

void PbeRequestStop()
{
    Fake().calls.append("stop");
}

QPbeScreen *QPbeScreen::Current()
{
    static QPbeScreen screen;
    return &screen;
}

void QPbeScreen::TurnOnScreenRepaint()
{
    Fake().repaintOn = true;
    Fake().calls.append("repaint on");
}

void QPbeScreen::TurnOffScreenRepaint()
{
    Fake().repaintOn = false;
    Fake().calls.append("repaint off");
}

void QPbeScreen::SetKeyboardLayout(const QString &identifier)
{
    Fake().calls.append("keyboard layout " + identifier.toLatin1());
}

void QPbeScreen::SetPointerVisible(bool visible)
{
    Fake().calls.append(visible ? "pointer shown" : "pointer hidden");
}

int QPbeMouseNotifier::GetMousecount()
{
    return Fake().mouseCount;
}
