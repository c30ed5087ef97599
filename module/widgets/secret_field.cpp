// SPDX-License-Identifier: Apache-2.0
#include "module/widgets/secret_field.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QVariant>

namespace {

// As many records as typing and correcting makes; what is longer moves to new memory.
constexpr qsizetype kHistoryLength = 1024;

// A field without it has been touched, or was not watched from its beginning.
constexpr char kUntouched[] = "pba_untouched";

} // namespace

void WatchSecretField(QLineEdit *field)
{
    field->setProperty(kUntouched, true);
    const auto touch = [field] { field->setProperty(kUntouched, QVariant()); };
    QObject::connect(field, &QLineEdit::textChanged, field, touch, Qt::SingleShotConnection);
}

// One assignment would leave the buffer and the history behind as they are.
void EmptySecretField(QLineEdit *field)
{
    // What a validator refuses stays in the history, and no change is announced.
    if (field->property(kUntouched).toBool() && !field->validator())
        return;
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
