// The tests of volumes, of the host's answers and of the program itself.
#include <QCoreApplication>

#include "test_main.h"

PBA_TEST_MAIN(QCoreApplication)
