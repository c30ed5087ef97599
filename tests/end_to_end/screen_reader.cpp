// SPDX-License-Identifier: Apache-2.0
// Preloaded into pba_host and what it starts: keeps a file that says what stands on the screen and where. A
// line for each widget that is visible: name, centre on the screen, text if it has one, divided by tabs. What
// is typed into fields is not told. SCREEN_READER_REPORT names the file, which is locked while it changes.
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <QApplication>
#include <QLineEdit>
#include <QTimer>

namespace {

// Before the screen confines itself.
const int s_report = open(std::getenv("SCREEN_READER_REPORT"), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);

void Report()
{
    QByteArray lines;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (!widget->isVisible() || qobject_cast<const QLineEdit *>(widget))
            continue;
        const QString text = widget->property("text").toString().simplified();
        const QPoint centre = widget->mapToGlobal(widget->rect().center());
        lines += u"%1\t%2\t%3\t%4\n"_qs.arg(widget->objectName())
                     .arg(centre.x())
                     .arg(centre.y())
                     .arg(text)
                     .toUtf8();
    }
    flock(s_report, LOCK_EX);
    if (ftruncate(s_report, 0) != 0 || lseek(s_report, 0, SEEK_SET) != 0 ||
        write(s_report, lines.constData(), static_cast<std::size_t>(lines.size())) != lines.size())
        std::perror("screen_reader");
    flock(s_report, LOCK_UN);
}

void Start()
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, Report);
    timer->start(50);
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace
