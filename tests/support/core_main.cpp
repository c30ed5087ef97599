// SPDX-License-Identifier: Apache-2.0
// The main of test programs without a window.
#include <QCoreApplication>

#include "tests/support/test_main.h"

PBA_TEST_MAIN(QCoreApplication)
