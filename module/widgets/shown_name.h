// SPDX-License-Identifier: Apache-2.0
// Names from outside, of a person, a computer, a token, a language: of any length, with any characters.
#pragma once

#include <QString>

// What is shown of a name: the whole, or of one that no screen can hold the beginning, for the toolkit takes
// its time to measure a text.
QString ShownName(const QString &name);
// As the text of a button or a menu, which would take "&" for the mark of a shortcut and a tab for a column.
QString ButtonText(const QString &name);
// And back.
QString NameOnButton(const QString &text);
// As a tool tip, which would take markup for its own.
QString ToolTipText(const QString &name);
