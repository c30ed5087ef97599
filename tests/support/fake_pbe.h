// SPDX-License-Identifier: Apache-2.0
// A platform library for tests: it records what the module asks of it and answers as it is told. Its files
// are the platform's own, in a directory that Reset() makes anew.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QTemporaryDir>

namespace fake_pbe {

struct Message
{
    std::uint32_t severity;
    std::uint32_t kind;
    QByteArray tag;
    QByteArray text;
};

struct State
{
    QList<Message> messages;
    // What was asked of screen and application, in order: "repaint on", "repaint off", "pointer shown",
    // "pointer hidden", "keyboard layout 00000407" and the like, "busy on", "busy off", "wait sign on", "wait
    // sign off", "tokens added", "tokens removed", "stop".
    QList<QByteArray> calls;
    // What the host has watched, by the descriptor: to be called by the test. Null where it has ended.
    QMap<int, std::function<void()>> watches;
    std::uint32_t severity = 1000;
    int mouseCount = 0;
    std::uint64_t counter = 0;
    std::uint32_t layout = 0;
    bool capsLock = false;
    std::unique_ptr<QTemporaryDir> root;
};

State &Now();
// Everything as at the start, and a fresh file root with the directories \pba and \pba\help.
void Reset();

// The texts of all messages, one behind the other.
QByteArray LogText();
inline const QList<QByteArray> &Calls()
{
    return Now().calls;
}
void SetKeyboard(std::uint32_t layout, bool capsLock);

// The running system's name of a path of the module.
QString FileName(const char16_t *path);
void WriteFile(const char16_t *path, const QByteArray &bytes);

} // namespace fake_pbe
