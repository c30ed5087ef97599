// SPDX-License-Identifier: Apache-2.0
#include "tools/tour/stage.h"

#include <cstdio>

#include <dlfcn.h>

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QStringConverter>
#include <QTimer>

#include "pbe/files.h"
#include "pbe/log.h"
#include "tools/tour/shown_texts.h"
#include "tools/tour/translations.h"

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

Stage::Stage(const char *module, const QString &pictures, const QString &language)
    : m_pictures(pictures)
{
    PbeSetLogFile("/dev/null");
    PbeSetFileRoot(m_root.path().toUtf8().constData());
    PrepareFiles(language);
    void *library = dlopen(module, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        qFatal("%s", dlerror());
    m_createMainView = reinterpret_cast<decltype(m_createMainView)>(dlsym(library, "CreateMainView"));
    m_deleteMainView = reinterpret_cast<decltype(m_deleteMainView)>(dlsym(library, "DeleteMainView"));
    translator = reinterpret_cast<decltype(&CreateTranslator)>(dlsym(library, "CreateTranslator"))();
    m_deleteTranslator = reinterpret_cast<decltype(m_deleteTranslator)>(dlsym(library, "DeleteTranslator"));
    for (const TranslatedText &text : TranslatedTexts(language)) {
        if (text.forms.first() != text.source)
            m_englishTexts.insert(text.source);
    }
}

Stage::~Stage()
{
    m_deleteTranslator(translator);
}

void Stage::PrepareFiles(const QString &language)
{
    if (QProcess::execute(PBA_SOURCE_DIR "/scripts/put_texts.sh", {PBA_BUILD_DIR, language, m_root.path()}) !=
        0)
        qFatal("no texts");
    WriteFile("../display.json", kDisplay);
    qputenv("XDG_RUNTIME_DIR", m_root.path().toUtf8());
    // GLib's event loop runs no timers inside one, and timers set the focus.
    qputenv("QT_NO_GLIB", "1");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + m_root.filePath("display.json").toUtf8());
    m_pictures.mkpath(".");
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
        Fault("the view failed", "after this picture");
    m_deleteMainView(view);
}

void Stage::TakePicture(const char *name)
{
    const QSize screen = QGuiApplication::primaryScreen()->size();
    for (const QSize size : {QSize(800, 600), screen}) {
        Dialog()->resize(size);
        Settle();
        CheckTexts(name);
    }
    QImage picture(screen, QImage::Format_RGB32);
    picture.fill(Qt::black);
    {
        QPainter painter(&picture);
        for (QWidget *window :
             {Dialog(), QApplication::activeModalWidget(), QApplication::activePopupWidget()}) {
            if (window)
                painter.drawPixmap(window->pos(), window->grab());
        }
    }
    CheckPicture(picture, name);
    m_taken.append(picture);
    if (!picture.save(m_pictures.filePath(QString::asprintf("%02lld-%s.png", m_taken.size(), name))))
        Fault("cannot be written", name);
}

void Stage::TakeListPicture(const char *name, const char *selector)
{
    QMenu *list = Find<QPushButton>(selector)->menu();
    list->popup(QPoint());
    TakePicture(name);
    list->close();
}

void Stage::TakeMessagePicture(const char *name, const char *button, const char *answer)
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
        if (answer)
            message->findChild<QAbstractButton *>(QString::fromLatin1(answer))->click();
        else
            message->reject();
    });
    watch.start(0);
    Click(button);
    if (!taken)
        Fault("no message came up", name);
}

void Stage::CheckTexts(const char *name)
{
    const QWidget *message = QApplication::activeModalWidget();
    const QWidget *window = message ? message : Dialog();
    for (const QString &text : ClippedTexts(window))
        Fault("cut off, in " + QString::number(window->width()) + " pixels: " + text, name);
    for (const QString &text : ShownTexts(window)) {
        if (m_englishTexts.contains(text))
            Fault("not translated: " + text, name);
    }
}

void Stage::CheckPicture(const QImage &picture, const char *name)
{
    // In the middle, where the page is, a text has its shades.
    QSet<QRgb> colours;
    for (int y = 192; y < 576; ++y) {
        for (int x = 256; x < 768; ++x)
            colours.insert(picture.pixel(x, y));
    }
    if (colours.size() < 16)
        Fault("blank", name);
    if (m_taken.contains(picture))
        Fault("shows what an earlier one shows", name);
}

void Stage::Type(const char *text)
{
    for (const char *key = text; *key; ++key)
        Press(Qt::Key(QChar::fromLatin1(*key).toUpper().unicode()), QString::fromLatin1(key, 1));
}

void Stage::Press(Qt::Key key, const QString &text)
{
    Settle();
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent event(type, key, Qt::NoModifier, text);
        QApplication::sendEvent(Dialog()->focusWidget(), &event);
    }
}

void Stage::Fault(const QString &what, const char *name)
{
    ++m_faults;
    std::fprintf(stderr, "pba_tour: %s: %s\n", name, qPrintable(what));
}

QWidget *Stage::Dialog()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == "PbaMainWindow")
            return window;
    }
    qFatal("no main window");
}
