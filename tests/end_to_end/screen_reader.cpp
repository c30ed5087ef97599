// Preloaded into a program: keeps a file that says what stands on the screen and where. A line for each label
// and button that is visible: name, centre on the screen, text, divided by tabs. What is typed into fields is
// not told. SCREEN_READER_REPORT names the file.
#include <cstdio>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QSaveFile>
#include <QTimer>

namespace {

constexpr int kMilliseconds = 50;

QByteArray Line(const QWidget &widget, const QString &text)
{
    const QPoint centre = widget.mapToGlobal(widget.rect().center());
    return QStringLiteral("%1\t%2\t%3\t%4\n")
        .arg(widget.objectName())
        .arg(centre.x())
        .arg(centre.y())
        .arg(text.simplified())
        .toUtf8();
}

void Report(const QString &path)
{
    QByteArray lines;
    for (const QWidget *widget : QApplication::allWidgets()) {
        if (!widget->isVisible())
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            lines += Line(*widget, label->text());
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            lines += Line(*widget, button->text());
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
    timer->start(kMilliseconds);
}

Q_COREAPP_STARTUP_FUNCTION(Start)

} // namespace
