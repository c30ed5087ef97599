#include "fake_pbe.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "pbe/application.h"
#include "pbe/counter.h"
#include "pbe/files.h"
#include "pbe/log.h"
#include "pbe/mouse_notifier.h"
#include "pbe/screen.h"

namespace {

constexpr std::uint32_t kEverySeverity = 1000;

struct State
{
    std::vector<fake_pbe::Message> messages;
    std::uint32_t severity = kEverySeverity;
    int severityQuestions = 0;
    std::vector<std::uint64_t> counterValues;
    std::size_t nextCounterValue = 0;
    int mouseCount = 0;
    bool repaintOn = true;
    bool pointerVisible = true;
    QList<QByteArray> calls;
    std::unique_ptr<QTemporaryDir> ownRoot;
    QString root;
    int nextDescriptor = -1;
};

// Made on first use: the module logs before main.
std::unique_ptr<State> &Holder()
{
    static auto holder = std::make_unique<State>();
    return holder;
}

State &Current()
{
    return *Holder();
}

const QString &Root()
{
    State &state = Current();
    if (state.root.isEmpty()) {
        state.ownRoot = std::make_unique<QTemporaryDir>();
        state.root = state.ownRoot->path();
        QDir(state.root).mkpath(QStringLiteral("pba/help"));
    }
    return state.root;
}

QByteArray LocalName(const char16_t *path)
{
    return fake_pbe::FileName(path).toUtf8();
}

// As the platform does: never waits, and takes regular files only.
kro::result_t OpenRegular(const char16_t *path, int flags, int *descriptor)
{
    const int opened = open(LocalName(path).constData(), flags | O_NONBLOCK | O_CLOEXEC, 0600);
    if (opened < 0)
        return errno == ENOENT ? kro::kNotFound : kro::kAccessDenied;
    struct stat status = {};
    if (fstat(opened, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(opened);
        return kro::kAccessDenied;
    }
    *descriptor = opened;
    return kro::kOk;
}

} // namespace

namespace fake_pbe {

void Reset()
{
    MessagesAtLoad();
    Holder() = std::make_unique<State>();
}

const std::vector<Message> &MessagesAtLoad()
{
    static const std::vector<Message> messages = Messages();
    return messages;
}

const std::vector<Message> &Messages()
{
    return Current().messages;
}

QByteArray LogText()
{
    QByteArray log;
    for (const Message &message : Messages())
        log += message.text;
    return log;
}

void SetSeverity(std::uint32_t severity)
{
    Current().severity = severity;
}

int SeverityQuestions()
{
    return Current().severityQuestions;
}

void SetCounterValues(std::vector<std::uint64_t> values)
{
    Current().counterValues = std::move(values);
    Current().nextCounterValue = 0;
}

void SetMouseCount(int count)
{
    Current().mouseCount = count;
}

bool IsRepaintOn()
{
    return Current().repaintOn;
}

const QList<QByteArray> &Calls()
{
    return Current().calls;
}

QString FileName(const char16_t *path)
{
    return Root() + QString::fromUtf16(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

void WriteFile(const char16_t *path, const QByteArray &bytes)
{
    QFile file(FileName(path));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", LocalName(path).constData());
}

QByteArray ReadFile(const char16_t *path)
{
    QFile file(FileName(path));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", LocalName(path).constData());
    return file.readAll();
}

void MakeFifo(const char16_t *path)
{
    if (mkfifo(LocalName(path).constData(), 0600) != 0)
        qFatal("cannot make %s", LocalName(path).constData());
}

void SetNextDescriptor(int descriptor)
{
    Current().nextDescriptor = descriptor;
}

} // namespace fake_pbe

void PbeLogMessage(std::uint32_t severity, std::uint32_t kind, const char *tag, const char *text)
{
    Current().messages.push_back({severity, kind, tag, text});
}

std::uint32_t PbeGetLogSeverity()
{
    ++Current().severityQuestions;
    return Current().severity;
}

void PbeSetLogSeverity(std::uint32_t severity)
{
    Current().severity = severity;
}

kro::result_t PbeSetLogFile(const char *)
{
    return kro::kOk;
}

std::uint64_t PbeGetPerformanceCounterValue()
{
    State &state = Current();
    if (state.counterValues.empty())
        return 0;
    const std::size_t index = std::min(state.nextCounterValue++, state.counterValues.size() - 1);
    return state.counterValues[index];
}

void PbeSetFileRoot(const char *directory)
{
    Current().root = QString::fromUtf8(directory);
}

kro::result_t PbeGetFilePath(const char16_t *path, kro::string_t *file)
{
    if (path[0] != u'\\')
        return kro::kInvalidArgument;
    *file = kro::string_t(LocalName(path).constData());
    return kro::kOk;
}

bool PbeFileExists(const char16_t *path)
{
    return access(LocalName(path).constData(), F_OK) == 0;
}

kro::result_t PbeOpenFileForReading(const char16_t *path, int *descriptor)
{
    int &next = Current().nextDescriptor;
    if (next < 0)
        return OpenRegular(path, O_RDONLY, descriptor);
    *descriptor = std::exchange(next, -1);
    return kro::kOk;
}

kro::result_t PbeOpenFileForWriting(const char16_t *path, int *descriptor)
{
    return OpenRegular(path, O_WRONLY | O_CREAT | O_TRUNC, descriptor);
}

void PbeSetBusy(bool busy)
{
    Current().calls.append(busy ? "busy on" : "busy off");
}

void PbeRequestStop()
{
    Current().calls.append("stop");
    if (QCoreApplication::instance())
        QCoreApplication::exit(1);
}

QPbeScreen *QPbeScreen::Current()
{
    static QPbeScreen screen;
    return &screen;
}

void QPbeScreen::TurnOnScreenRepaint()
{
    ::Current().repaintOn = true;
    ::Current().calls.append("repaint on");
}

void QPbeScreen::TurnOffScreenRepaint()
{
    ::Current().repaintOn = false;
    ::Current().calls.append("repaint off");
}

void QPbeScreen::SetPointerVisible(bool visible)
{
    ::Current().pointerVisible = visible;
    ::Current().calls.append(visible ? "pointer shown" : "pointer hidden");
}

bool QPbeScreen::IsPointerVisible() const
{
    return ::Current().pointerVisible;
}

int QPbeMouseNotifier::GetMousecount()
{
    return Current().mouseCount;
}
