// A platform library for tests: it records what the module asks of it and answers as it is told. Files lie in
// a directory of their own, made anew by Reset().
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

    bool operator==(const Message &) const = default;
};

// Everything as at the start: empty records, every severity logged, no pointing device, a fresh file root
// with the directories \pba and \pba\help.
void Reset();

const std::vector<Message> &Messages();
// What was written before the first Reset(): while the program was being loaded.
const std::vector<Message> &MessagesAtLoad();
// The texts of all messages, one behind the other.
QByteArray LogText();
void SetSeverity(std::uint32_t severity);
// How often the severity was asked for.
int SeverityQuestions();

// Given out in turn; the last one again and again.
void SetCounterValues(std::vector<std::uint64_t> values);

void SetMouseCount(int count);
bool IsRepaintOn();
// What was asked of screen and application, in order: "repaint on", "repaint off", "pointer shown",
// "pointer hidden", "busy on", "busy off", "stop".
const QList<QByteArray> &Calls();

// The running system's name of a path of the module.
QString FileName(const char16_t *path);
void WriteFile(const char16_t *path, const QByteArray &bytes);
QByteArray ReadFile(const char16_t *path);
void MakeFifo(const char16_t *path);
// The next file opened for reading is this descriptor, whatever its name.
void SetNextDescriptor(int descriptor);

} // namespace fake_pbe
