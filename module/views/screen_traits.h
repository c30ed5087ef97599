// SPDX-License-Identifier: Apache-2.0
// What the controller needs to know of each screen, in one table instead of a switch here and there.
#pragma once

class QPushButton;
class QWidget;

namespace Ui {
class PbaMainWindow;
}

namespace pba {

// Pages of the form's stack, by index.
enum Screen : int {
    kScreenLoginByPassword = 0,
    kScreenChangePassword = 1,
    kScreenCollectEntropy = 2,
    kScreenChallenge = 3,
    kScreenResponse = 4,
    kScreenTestBoot = 5,
    kScreenNoTokens = 6,
    kScreenLoginByToken = 7,
    kScreenStarting = 8,
    kScreenStartingWindows = 9,
    kScreenNoUsers = 10,
    kScreenKeyboardTest = 11,
    kScreenCount
};

struct ScreenTraits
{
    // The button that Return presses. Null: none.
    QPushButton *(*defaultButton)(const Ui::PbaMainWindow &form);
    // Gets the focus once the page is up. Null: none, or the page chooses for itself.
    QWidget *(*focus)(const Ui::PbaMainWindow &form);
    // Path of the help text. Null: none.
    const char16_t *helpFile;
    bool helpButton;
    // A step of the password reset: offers to restart or quit it.
    bool recovery;
    // Nothing is typed here, so that only verbose logging is worth a warning.
    bool passive;
};

const ScreenTraits &TraitsOf(int screen);

} // namespace pba
