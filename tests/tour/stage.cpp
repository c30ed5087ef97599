#include "stage.h"

#include <cstdio>

#include <dlfcn.h>

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QProcess>
#include <QScreen>
#include <QStringConverter>
#include <QTimer>

#include "pbe/files.h"
#include "pbe/log.h"

namespace {

// The toolkit's own choice is a display of 800 by 800.
constexpr char kDisplay[] = R"({"screens": [{"name": "tour", "x": 0, "y": 0, "width": 1024, "height": 768,
    "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})";

// A page switch queues its focus, and that a repaint.
void Settle()
{
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
}

} // namespace

Stage::Stage(const char *module, const QString &pictures)
    : m_pictures(pictures)
{
    PbeSetLogFile("/dev/null");
    PbeSetFileRoot(m_root.path().toUtf8().constData());
    PrepareFiles();
    void *library = dlopen(module, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        qFatal("%s", dlerror());
    m_createMainView = reinterpret_cast<decltype(m_createMainView)>(dlsym(library, "CreateMainView"));
    m_deleteMainView = reinterpret_cast<decltype(m_deleteMainView)>(dlsym(library, "DeleteMainView"));
}

void Stage::PrepareFiles()
{
    QDir(m_root.path()).mkpath("pba/help");
    WriteFile("../display.json", kDisplay);
    qputenv("XDG_RUNTIME_DIR", m_root.path().toUtf8());
    // GLib's event loop runs no timers inside one, and timers set the focus.
    qputenv("QT_NO_GLIB", "1");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + m_root.filePath("display.json").toUtf8());
    m_pictures.mkpath(".");
    if (QProcess::execute(PBA_ADMIN, {"settings", "compile", PBA_SOURCE_DIR "/scripts/demo_settings.json",
                                      m_root.filePath("pba/settings.bin")}) != 0)
        qFatal("no settings");
    for (const QFileInfo &info : QDir(PBA_SOURCE_DIR "/help/en").entryInfoList({"*.txt"})) {
        QFile file(info.filePath());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(info.filePath()));
        WriteText("help/" + info.fileName(), QString::fromUtf8(file.readAll()));
    }
}

void Stage::WriteFile(const QString &name, const QByteArray &bytes)
{
    QFile file(m_root.filePath("pba/" + name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

void Stage::WriteText(const QString &name, const QString &text)
{
    QStringEncoder encode(QStringEncoder::Utf16LE, QStringConverter::Flag::WriteBom);
    WriteFile(name, encode(text));
}

void Stage::Play(const std::function<void()> &request, const std::function<void()> &scenario)
{
    host.actions["Init"] = [&] {
        // A text cursor that blinks would make two pictures of one.
        QApplication::setCursorFlashTime(0);
        host.view->SetOptions(options);
        request();
        QTimer::singleShot(0, qApp, [&] {
            scenario();
            QCoreApplication::exit(0);
        });
    };
    pba::IMainView *view = m_createMainView();
    view->SetBusinessLogic(&host);
    if (view->Run() != kro::kOk)
        Fault("the view failed behind", "this picture");
    m_deleteMainView(view);
}

void Stage::TakePicture(const char *name)
{
    Settle();
    QImage picture(QGuiApplication::primaryScreen()->size(), QImage::Format_RGB32);
    picture.fill(Qt::black);
    {
        QPainter painter(&picture);
        for (QWidget *window : {Dialog(), QApplication::activeModalWidget()}) {
            if (window)
                painter.drawPixmap(window->pos(), window->grab());
        }
    }
    const QString file = QString::asprintf("%02d-%s.png", ++m_number, name);
    if (!picture.save(m_pictures.filePath(file)))
        Fault("cannot write", name);
}

void Stage::TakeMessagePicture(const char *name, const std::function<void()> &act)
{
    bool taken = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto *message = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!message)
            return;
        watch.stop();
        TakePicture(name);
        taken = true;
        message->reject();
    });
    watch.start(0);
    act();
    if (!taken)
        Fault("no message came up for", name);
}

void Stage::Fault(const char *what, const char *name)
{
    ++m_faults;
    std::fprintf(stderr, "pba_tour: %s %02d-%s\n", what, m_number, name);
}

QWidget *Stage::Dialog()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "PbaMainWindow")
            return window;
    }
    qFatal("no main window");
}
