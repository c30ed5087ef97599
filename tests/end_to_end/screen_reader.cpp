// SPDX-License-Identifier: Apache-2.0
// Preloaded into a program: keeps a file that says what stands on the screen and where. A line for each
// widget that is visible: name, centre on the screen, text if it has one, divided by tabs. What is typed into
// fields is not told. SCREEN_READER_REPORT names the file.
#include <cstdio>

#include <QApplication>
#include <QLineEdit>
#include <QSaveFile>
#include <QTimer>

namespace {

void Report(const QString &path)
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
    QSaveFile file(path); // whoever reads sees the whole of it
    if (!file.open(QSaveFile::WriteOnly) || file.write(lines) != lines.size() || !file.commit())
        std::perror("screen_reader");
}

void Start()
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp,
                     [] { Report(qEnvironmentVariable("SCREEN_READER_REPORT")); });
    timer->start(50);
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace
