#include "module/widgets/secret_field.h"

#include <QLineEdit>
#include <QSignalBlocker>

namespace {

// As many records as typing and correcting makes; what is longer moves to new memory.
constexpr qsizetype kHistoryLength = 1024;

} // namespace

// One assignment would leave the buffer and the history behind as they are.
void EmptySecretField(QLineEdit *field)
{
    const qsizetype length = field->text().size();
    field->clear();
    const QSignalBlocker quiet(field);
    const QString mask = field->inputMask();
    const int limit = field->maxLength();
    field->setInputMask(QString());
    field->setMaxLength(static_cast<int>(length + kHistoryLength));
    // First what fits into the buffer, which a longer text would leave.
    for (const qsizetype filler : {length, kHistoryLength})
        field->insert(QString(filler, u'0'));
    field->setText(QString()); // not clear(), which the person could undo
    field->setMaxLength(limit);
    field->setInputMask(mask);
}
