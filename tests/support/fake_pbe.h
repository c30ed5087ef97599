// A platform library for tests: it records what the module asks of it and answers as it is told. Its files
// are the platform's own, in a directory that Reset() makes anew.
#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QList>
#include <QString>

namespace fake_pbe {

struct Message
{
    std::uint32_t severity;
    std::uint32_t kind;
    QByteArray tag;
    QByteArray text;
};

// Everything as at the start: empty records, every severity logged, no pointing device, a fresh file root
// with the directories \pba and \pba\help.
void Reset();

const std::vector<Message> &Messages();
// The texts of all messages, one behind the other.
QByteArray LogText();
void SetSeverity(std::uint32_t severity);

void SetMouseCount(int count);
void SetKeyboard(std::uint32_t layout, bool capsLock);
bool IsRepaintOn();
// What was asked of screen and application, in order: "repaint on", "repaint off", "pointer shown",
// "pointer hidden", "keyboard layout 00000407" and the like, "busy on", "busy off", "stop".
const QList<QByteArray> &Calls();

// The running system's name of a path of the module.
QString FileName(const char16_t *path);
void WriteFile(const char16_t *path, const QByteArray &bytes);

} // namespace fake_pbe
