// SPDX-License-Identifier: Apache-2.0
// Texts that the toolkit asks the view's catalogue for. Nothing includes this file: lupdate reads it.

// Decides whether everything is mirrored: RTL where the language runs from right to left, else LTR.
QT_TRANSLATE_NOOP("QGuiApplication", "QT_LAYOUT_DIRECTION")

// The menu that a right click on a line brings up.
QT_TRANSLATE_NOOP("QLineEdit", "&Undo")
QT_TRANSLATE_NOOP("QLineEdit", "&Redo")
QT_TRANSLATE_NOOP("QLineEdit", "Cu&t")
QT_TRANSLATE_NOOP("QLineEdit", "&Copy")
QT_TRANSLATE_NOOP("QLineEdit", "&Paste")
QT_TRANSLATE_NOOP("QLineEdit", "Delete")
QT_TRANSLATE_NOOP("QLineEdit", "Select All")
QT_TRANSLATE_NOOP("QShortcut", "Ctrl")
QT_TRANSLATE_NOOP("QShortcut", "Shift")
