// SPDX-License-Identifier: Apache-2.0
// Text files of the module, read and written whole: UTF-16, CR LF in the file and LF in the string. Failures
// are logged; what they mean is the caller's affair.
#pragma once

#include <QString>

// `*text` is replaced only on success.
bool ReadTextFromFile(const QString &path, QString *text);
// True once the file is open and the text handed over.
bool WriteTextToFile(const QString &path, const QString &text);
