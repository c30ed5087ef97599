// A stage for the module as it is shipped: a scripted host plays on it, and pictures of what a person would
// see on a display of 1024 by 768 are written to a directory, numbered in their order.
#pragma once

#include <functional>

#include <QAbstractButton>
#include <QDir>
#include <QLineEdit>
#include <QTemporaryDir>

#include "recording_host.h"

class Stage
{
public:
    Stage(const char *module, const QString &pictures);

    RecordingHost host;
    std::uint32_t options = pba::kOptionLoginByPassword;

    // Runs the view: `request` is made in the host's Init, the scenario is played when the page is up.
    void Play(const std::function<void()> &request, const std::function<void()> &scenario);
    void TakePicture(const char *name);
    // Pictures the message that `act` leads to, over the page, and closes it.
    void TakeMessagePicture(const char *name, const std::function<void()> &act);

    void Click(const char *button) { Find<QAbstractButton>(button)->click(); }
    void Fill(const char *field, const char *text)
    {
        Find<QLineEdit>(field)->setText(QString::fromUtf8(text));
    }
    // Files below \pba\; texts as the view reads them.
    void WriteFile(const QString &name, const QByteArray &bytes);
    void WriteText(const QString &name, const QString &text);

    int Faults() const { return m_faults; }

private:
    void PrepareFiles();
    void Fault(const char *what, const char *name);
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
    int m_number = 0;
    int m_faults = 0;
};
