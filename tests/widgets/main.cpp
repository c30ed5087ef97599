// The tests of the form, the widgets and the dialogs.
#include <QApplication>

#include "test_main.h"

PBA_TEST_MAIN(QApplication)
