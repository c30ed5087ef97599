#include "views/session.h"

#include <QApplication>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

#include "fake_pbe.h"

Session::Session()
    : m_view(CreateMainView())
{
    fake_pbe::Reset();
}

kro::result_t Session::Play(const std::function<void()> &scenario, int exitCode)
{
    const auto action = host.actions["Init"];
    host.actions["Init"] = [=, this] {
        host.view->SetOptions(options);
        if (showInitialScreen)
            host.view->ShowInitialScreen();
        if (action)
            action();
        QTimer::singleShot(0, qApp, [=] {
            scenario();
            QCoreApplication::exit(exitCode);
        });
    };
    m_view->SetBusinessLogic(&host);
    return m_view->Run();
}

QDialog *Session::Dialog()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == u"PbaMainWindow")
            return static_cast<QDialog *>(widget);
    }
    qFatal("no main window");
}

int Session::Screen()
{
    return Find<QStackedWidget>("stackedWidget")->currentIndex();
}

void Session::Click(const char *button)
{
    QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
}

void Session::Type(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
}

void Session::EnterCredentials(const QString &userName, const QString &password)
{
    Field("loginUserName")->setText(userName);
    Field("loginPassword")->setText(password);
}

void Session::Notify(int eventType)
{
    QEvent event(static_cast<QEvent::Type>(eventType));
    QCoreApplication::sendEvent(Dialog(), &event);
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
    if (!dialog || dialog == m_answered || m_answers.isEmpty())
        return;
    Box box;
    box.title = dialog->findChild<QLabel *>(u"title"_qs)->text();
    box.text = dialog->findChild<QLabel *>(u"mainText"_qs)->text();
    for (const QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->isVisible())
            box.buttons.append(button->objectName() + u'=' + button->text());
    }
    box.errorTitle = dialog->findChild<QLabel *>(u"title"_qs)->property("error_title").toBool();
    if (const auto *version = dialog->findChild<QLabel *>(u"versionLabel"_qs))
        box.version = version->isVisible();
    if (const QCursor *cursor = QGuiApplication::overrideCursor())
        box.arrowCursor = cursor->shape() == Qt::ArrowCursor;
    box.buttons.sort();
    seen.append(box);
    m_answered = dialog;
    if (whileStanding)
        whileStanding();
    const QString answer = m_answers.takeFirst();
    if (answer == u"Escape")
        QTest::keyClick(dialog, Qt::Key_Escape);
    else
        QTest::mouseClick(dialog->findChild<QPushButton *>(answer), Qt::LeftButton);
    m_answered = nullptr;
}
