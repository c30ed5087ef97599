// A run of the real view on a recording host. The scenario is played on the running dialog, after the host's
// Init; when it returns, the run ends.
#pragma once

#include <functional>
#include <memory>

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "recording_host.h"

class Session
{
public:
    // Every session begins with a fresh platform: see fake_pbe::Reset.
    Session();

    // Asks for the first screen from Init, runs the view and plays the scenario; ends the run with
    // `exitCode`.
    kro::result_t Play(const std::function<void()> &scenario, int exitCode = 0);

    RecordingHost host;
    std::uint32_t options = pba::kOptionLoginByPassword;
    // Whether Init asks for the first screen.
    bool showInitialScreen = true;

    pba::IMainView *View() const { return m_view.get(); }
    static QDialog *Dialog();
    static int Screen();

    template <typename Widget>
    static Widget *Find(const char *name)
    {
        Widget *widget = Dialog()->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }
    static QLineEdit *Field(const char *name) { return Find<QLineEdit>(name); }
    static QLabel *Label(const char *name) { return Find<QLabel>(name); }
    static void Click(const char *button);
    // Types into whatever has the focus.
    static void Type(const QString &text);
    // Fills the login page.
    static void EnterCredentials(const QString &userName, const QString &password);
    // Sends a platform event to the dialog.
    static void Notify(int eventType);

private:
    struct Delete
    {
        void operator()(pba::IMainView *view) const { DeleteMainView(view); }
    };
    std::unique_ptr<pba::IMainView, Delete> m_view;
};

// What stood on a modal dialog.
struct Box
{
    QString title;
    QString text;
    QStringList buttons;
    bool errorTitle = false;
    bool version = false;
    // The wait cursor was suspended.
    bool arrowCursor = false;
};

// Answers modal dialogs as they come up, one answer each: the object name of a button to click, or "Escape".
class Boxes : public QObject
{
public:
    explicit Boxes(const QStringList &answers);

    // Those that were answered.
    QList<Box> seen;
    // While dialogs stand, before the answer is given.
    std::function<void()> whileStanding;

private:
    void Look();

    QStringList m_answers;
    QDialog *m_answered = nullptr;
};
