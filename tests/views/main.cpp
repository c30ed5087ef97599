#include <QCoreApplication>

#include "test_main.h"

namespace {

// Every run of the view makes its own application object.
struct NoApplication
{
    NoApplication(int &, char **) {}
};

} // namespace

PBA_TEST_MAIN(NoApplication)
