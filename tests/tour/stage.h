// A stage for the module as it is shipped, in one language: a scripted host plays on it, and pictures of what
// a person would see on a display of 1024 by 768 are written to a directory, numbered in their order. A text
// that is cut off, there or at 800 by 600, and one that was left in English are faults.
#pragma once

#include <functional>

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
#include <QSet>
#include <QTemporaryDir>

#include "recording_host.h"

class Stage
{
public:
    Stage(const char *module, const QString &pictures, const QString &language);

    RecordingHost host;
    // Of the host's texts; null in English. Lives as long as the program.
    pba::ITranslator *translator = nullptr;
    std::uint32_t options = pba::kOptionLoginByPassword;

    // Runs the view: `request` is made in the host's Init, the scenario is played when the page is up.
    void Play(const std::function<void()> &request, const std::function<void()> &scenario);
    void TakePicture(const char *name);
    // Pictures the opened list of a selector.
    void TakeListPicture(const char *name, const char *selector);
    // Pictures the message that `act` leads to, over the page, and closes it, or presses a button of it.
    void TakeMessagePicture(const char *name, const std::function<void()> &act)
    {
        TakeMessagePicture(name, nullptr, act);
    }
    void TakeMessagePicture(const char *name, const char *button, const std::function<void()> &act);

    void Click(const char *button) { Find<QAbstractButton>(button)->click(); }
    void Fill(const char *field, const char *text)
    {
        Find<QLineEdit>(field)->setText(QString::fromUtf8(text));
    }
    // Keys for what has the focus.
    void Type(const char *text);
    void Press(Qt::Key key, const QString &text = QString());
    // Files below \pba\; texts as the view reads them.
    void WriteFile(const QString &name, const QByteArray &bytes);
    void WriteText(const QString &name, const QString &text);

    int Faults() const { return m_faults; }

private:
    void PrepareFiles(const QString &language);
    void CheckTexts(const char *name);
    void Fault(const QString &what, const char *name);
    static QWidget *Dialog();
    template <typename Widget>
    static Widget *Find(const char *name)
    {
        Widget *widget = Dialog()->findChild<Widget *>(QString::fromLatin1(name));
        if (!widget)
            qFatal("no widget %s", name);
        return widget;
    }

    decltype(&CreateMainView) m_createMainView = nullptr;
    decltype(&DeleteMainView) m_deleteMainView = nullptr;
    QTemporaryDir m_root;
    QDir m_pictures;
    // Those that read differently in the stage's language.
    QSet<QString> m_englishTexts;
    int m_number = 0;
    int m_faults = 0;
};
