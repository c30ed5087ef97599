#include "views/entropy_dialog.h"

#include <QCoreApplication>

namespace pba {

QDialogWithEntropyCollection::QDialogWithEntropyCollection()
{
    QCoreApplication::instance()->installEventFilter(this);
}

void QDialogWithEntropyCollection::SetCollectingEntropy(bool collecting)
{
    m_collecting = collecting;
}

bool QDialogWithEntropyCollection::IsCollectingEntropy() const
{
    return m_collecting;
}

} // namespace pba
