// SPDX-License-Identifier: Apache-2.0
// What a person can read in a window, and whether all of it is there. Knows the module's widgets by the names
// of their classes, since a program that loads the module has no other.
#pragma once

#include <QStringList>

class QWidget;

// Texts of visible labels and buttons, and hints in lines.
QStringList ShownTexts(const QWidget *window);

// Names and texts of the widgets whose text is cut off. Those that tell a cut text as a tool tip are left
// out.
QStringList ClippedTexts(const QWidget *window);
