// The dialog base that will gather entropy from keys and pointer while it is told to: the switch, and the
// application-wide event filter through which it sees moves over every widget.
#pragma once

#include <QDialog>

namespace pba {

class QDialogWithEntropyCollection : public QDialog
{
    Q_OBJECT

public:
    QDialogWithEntropyCollection();

    void SetCollectingEntropy(bool collecting);
    bool IsCollectingEntropy() const;

private:
    bool m_collecting = false;
};

} // namespace pba
