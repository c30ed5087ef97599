// SPDX-License-Identifier: Apache-2.0
// The focus on a page that has only just been switched to, or in a list that has been built anew.
#pragma once

class QWidget;

// Gives the focus at once, and again when the switch has been processed, which may have moved it on. A key or
// a click that comes before that finds it in its place, and what the person does with it then stays. Of
// several widgets the last one wins.
void GiveFocus(QWidget *widget);
