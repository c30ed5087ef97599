// SPDX-License-Identifier: Apache-2.0
// Fields that hold a secret which is no longer needed.
#pragma once

class QLineEdit;

// To be called while the field is new: until its text changes, by whatever means, there is nothing in it that
// would have to be overwritten, which costs as much as all else about a field. One that is not watched is
// always overwritten.
void WatchSecretField(QLineEdit *field);

// Empties the field for good: its buffer and the single characters of its undo history are overwritten. The
// change is announced once, as by clear().
void EmptySecretField(QLineEdit *field);
