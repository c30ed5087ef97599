// SPDX-License-Identifier: Apache-2.0
// A run of the real view on a recording host. The scenario is played on the running dialog, after the host's
// Init; when it returns, the run ends.
#pragma once

#include <functional>
#include <memory>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>

#include "tests/support/fake_pbe.h"
#include "tests/support/recording_host.h"

class Session
{
public:
    // Every session begins with a fresh platform. In a test with rows the row is named when it fails.
    explicit Session(const QByteArray &row = {})
        : view(CreateMainView(), &DeleteMainView)
        , m_row(row)
        , m_failedBefore(QTest::currentTestFailed())
    {
        fake_pbe::Reset();
    }
    ~Session()
    {
        if (QTest::currentTestFailed() && !m_failedBefore)
            qWarning("failed row: %s", m_row.constData());
    }

    // Runs the view, makes the request from Init and plays the scenario; ends the run with `exitCode`.
    kro::result_t Play(const std::function<void()> &scenario, int exitCode = 0);

    RecordingHost host;
    std::uint32_t options = pba::kOptionLoginByPassword;
    std::function<void()> request = [this] { host.view->ShowInitialScreen(); };
    const std::unique_ptr<pba::IMainView, decltype(&DeleteMainView)> view;

    static QDialog *Dialog();
    template <typename Widget = QPushButton>
    static Widget *Find(const char *name)
    {
        Widget *widget = Dialog()->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    static QLineEdit *Field(const char *name) { return Find<QLineEdit>(name); }
    static QLabel *Label(const char *name) { return Find<QLabel>(name); }
    static int Screen() { return Find<QStackedWidget>("stackedWidget")->currentIndex(); }
    static QString FocusName()
    {
        const QWidget *focus = QApplication::focusWidget();
        return focus ? focus->objectName() : QString();
    }
    static void Click(const char *button) { QTest::mouseClick(Find(button), Qt::LeftButton); }
    // A text or a key, typed into what has the focus.
    static void Type(const QString &text) { QTest::keyClicks(Dialog()->focusWidget(), text); }
    static void Press(Qt::Key key) { QTest::keyClick(Dialog()->focusWidget(), key); }
    // Fills the login page, and presses a button of it.
    static void LogIn(const char *button = "loginButton", const QString &userName = QStringLiteral("u"),
                      const QString &password = QStringLiteral("p"))
    {
        Field("loginUserName")->setText(userName);
        Field("loginPassword")->setText(password);
        Click(button);
    }
    // Sends a platform event to the dialog.
    static void Notify(int eventType)
    {
        QEvent event(static_cast<QEvent::Type>(eventType));
        QCoreApplication::sendEvent(Dialog(), &event);
    }

private:
    const QByteArray m_row;
    const bool m_failedBefore;
};

// What stood on a modal dialog.
struct Box
{
    QString title;
    QString text;
    // "name=text" of each, sorted.
    QString buttons;
    bool errorTitle = false;
    QString version;
    // Under the wait cursor.
    bool waiting = false;
};

// Answers modal dialogs as soon as they have the keys, one answer each: the object name of a button to click,
// or "Escape".
class Boxes : public QObject
{
public:
    explicit Boxes(const QStringList &answers);

    // Those that were answered.
    QList<Box> seen;
    // While dialogs stand, before the answer is given.
    std::function<void()> whileStanding = [] {};

private:
    void Look();

    QStringList m_answers;
    QDialog *m_answered = nullptr;
};
