// Several test classes in one program: each registers itself where it is defined, and the program's main runs
// them all, one after the other, under one application object.
#pragma once

#include <memory>
#include <vector>

#include <QObject>
#include <QTest>

namespace pba_test {

using Factory = std::unique_ptr<QObject> (*)();

inline std::vector<Factory> &Factories()
{
    static std::vector<Factory> factories;
    return factories;
}

template <typename TestClass>
struct Register
{
    Register()
    {
        Factories().push_back([]() -> std::unique_ptr<QObject> { return std::make_unique<TestClass>(); });
    }
};

// The exit code: how many tests failed, or 1 for a program without any.
template <typename Application>
int RunAll(int argc, char **argv)
{
    Application application(argc, argv);
    int failures = Factories().empty() ? 1 : 0;
    for (const Factory make : Factories())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures > 0 ? 1 : 0;
}

} // namespace pba_test

// Stands behind each test class.
#define PBA_REGISTER_TEST(TestClass) static const pba_test::Register<TestClass> registered##TestClass

// Stands once in a program.
#define PBA_TEST_MAIN(Application)                                                                           \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        QTEST_SET_MAIN_SOURCE_PATH                                                                           \
        return pba_test::RunAll<Application>(argc, argv);                                                    \
    }
