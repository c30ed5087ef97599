// Fields that hold a secret which is no longer needed.
#pragma once

class QLineEdit;

// Empties the field for good: its buffer and the single characters of its undo history are overwritten. The
// change is announced once, as by clear().
void EmptySecretField(QLineEdit *field);
