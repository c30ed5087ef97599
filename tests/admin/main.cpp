// The tests of the administrator's tool.
#include <QCoreApplication>

#include "test_main.h"

PBA_TEST_MAIN(QCoreApplication)
