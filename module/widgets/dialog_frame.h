// SPDX-License-Identifier: Apache-2.0
// The frame that the module's own dialogs share: no title bar, a fixed size, the middle of the screen, the
// common look.
#pragma once

class QDialog;

// To be called once the dialog's form has given it its size.
void SetUpDialogFrame(QDialog *dialog);
