// SPDX-License-Identifier: Apache-2.0
#include "tests/views/session.h"

#include <QTimer>

#include "tests/support/test_main.h"

// Every run of the view makes its own application object.
struct NoApplication
{
    NoApplication(int &, char **) {}
};

PBA_TEST_MAIN(NoApplication)

kro::result_t Session::Play(const std::function<void()> &scenario, int exitCode)
{
    host.actions["Init"] = [=, this] {
        request();
        QTimer::singleShot(0, qApp, [=] {
            scenario();
            QCoreApplication::exit(exitCode);
        });
    };
    view->SetOptions(options);
    view->SetBusinessLogic(&host);
    return view->Run();
}

QDialog *Session::Dialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == u"PbaMainWindow")
            return static_cast<QDialog *>(widget);
    }
    qFatal("no main window");
}

Boxes::Boxes(const QStringList &answers)
    : m_answers(answers)
{
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &Boxes::Look);
    timer->start(1);
}

void Boxes::Look()
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!dialog || dialog == m_answered || !dialog->isActiveWindow() || m_answers.isEmpty())
        return;
    const auto *title = dialog->findChild<QLabel *>(u"title"_qs);
    const auto *version = dialog->findChild<QLabel *>(u"versionLabel"_qs);
    const QCursor *cursor = QGuiApplication::overrideCursor();
    QStringList buttons;
    for (const QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->isVisible())
            buttons.append(button->objectName() + u'=' + button->text());
    }
    buttons.sort();
    seen.append({title->text(), dialog->findChild<QLabel *>(u"mainText"_qs)->text(), buttons.join(u','),
                 title->property("error_title").toBool(),
                 version && version->isVisible() ? version->text() : QString(),
                 cursor && cursor->shape() == Qt::WaitCursor});
    // Names are never taken for markup.
    QCOMPARE(title->textFormat(), Qt::PlainText);
    QCOMPARE(dialog->findChild<QLabel *>(u"mainText"_qs)->textFormat(), Qt::PlainText);
    m_answered = dialog;
    whileStanding();
    const QString answer = m_answers.takeFirst();
    if (answer == u"Escape")
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        QTest::mouseClick(dialog->findChild<QPushButton *>(answer), Qt::LeftButton);
    m_answered = nullptr;
}
