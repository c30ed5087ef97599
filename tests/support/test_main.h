// Several test classes in one program: each registers itself where it is defined, and the program's main runs
// them all, one after the other, under one application object.
#pragma once

#include <memory>
#include <vector>

#include <QTest>

namespace pba_test {

inline std::vector<std::unique_ptr<QObject> (*)()> factories;

template <typename TestClass>
bool Register()
{
    factories.push_back([]() -> std::unique_ptr<QObject> { return std::make_unique<TestClass>(); });
    return true;
}

template <typename Application>
int RunAll(int argc, char **argv)
{
    Application application(argc, argv);
    bool failed = factories.empty();
    for (const auto make : factories)
        failed |= QTest::qExec(make().get(), argc, argv) != 0;
    return failed;
}

} // namespace pba_test

// Stands behind each test class.
#define PBA_REGISTER_TEST(TestClass)                                                                         \
    [[maybe_unused]] static const bool registered##TestClass = pba_test::Register<TestClass>()

// Stands once in a program.
#define PBA_TEST_MAIN(Application)                                                                           \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        QTEST_SET_MAIN_SOURCE_PATH                                                                           \
        return pba_test::RunAll<Application>(argc, argv);                                                    \
    }
