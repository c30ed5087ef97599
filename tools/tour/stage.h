// SPDX-License-Identifier: Apache-2.0
// A stage for the module as it is shipped, in one language: a scripted host plays on it, and pictures of what
// a person would see on a display of 1024 by 768 are written to a directory, numbered in their order. Faults
// are a text that is cut off, there or at 800 by 600, or was left in English, and a picture without text or
// that shows what another one shows.
#pragma once

#include <functional>

#include <QAbstractButton>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QSet>
#include <QTemporaryDir>

#include "tests/support/recording_host.h"
#include "tests/support/test_files.h"

class Stage
{
public:
    Stage(const char *module, const QString &pictures, const QString &language);
    ~Stage();
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    RecordingHost host;
    // Of the host's texts; null in English. Lives as long as the stage.
    pba::ITranslator *translator = nullptr;
    std::uint32_t options = pba::kOptionLoginByPassword;

    // Runs the view: `request` is made in the host's Init, the scenario is played when the page is up.
    void Play(const std::function<void()> &request, const std::function<void()> &scenario);
    // From the first page on.
    void Play(const std::function<void()> &scenario)
    {
        Play([this] { host.view->ShowInitialScreen(); }, scenario);
    }
    void TakePicture(const char *name);
    // Pictures the opened list of a selector.
    void TakeListPicture(const char *name, const char *selector);
    // Pictures the message that a button leads to, over the page, and presses a button of it or closes it.
    void TakeMessagePicture(const char *name, const char *button, const char *answer = nullptr);

    void Click(const char *button) { Find<QAbstractButton>(button)->click(); }
    void Fill(const char *field, const char *text)
    {
        Find<QLineEdit>(field)->setText(QString::fromUtf8(text));
    }
    // Keys for what has the focus.
    void Type(const char *text);
    void Press(Qt::Key key, const QString &text = QString());
    // Files below \pba\; texts as the view reads them.
    void WriteFile(const QString &name, const QByteArray &bytes)
    {
        ::WriteFile(m_root.filePath("pba/" + name), bytes);
    }
    void WriteText(const QString &name, const QString &text);

    int Faults() const { return m_faults; }

private:
    void PrepareFiles(const QString &language);
    void CheckTexts(const char *name);
    void CheckPicture(const QImage &picture, const char *name);
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
    decltype(&DeleteTranslator) m_deleteTranslator = nullptr;
    QTemporaryDir m_root;
    QDir m_pictures;
    // Those that read differently in the stage's language.
    QSet<QString> m_englishTexts;
    QList<QImage> m_taken;
    int m_faults = 0;
};
