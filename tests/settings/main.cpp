// The tests of tracing and settings.
#include <QCoreApplication>

#include "test_main.h"

PBA_TEST_MAIN(QCoreApplication)
