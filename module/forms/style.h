// SPDX-License-Identifier: Apache-2.0
// The one style sheet of the module's windows.
#pragma once

class QDialog;
class QWidget;

// Gives a top-level dialog the common look; its children follow.
void ApplyPbaStyle(QDialog *dialog);
// Has the rules matched again, after a property or a text that a selector names was changed.
void Restyle(QWidget *widget);
