// SPDX-License-Identifier: Apache-2.0
// Several test classes in one program: each registers itself where it is defined, and the program's main runs
// them all, one after the other, under one application object.
#pragma once

#include <memory>
#include <vector>

#include <QTest>

namespace pba_test {

inline std::vector<std::unique_ptr<QObject> (*)()> factories;

} // namespace pba_test

// Stands behind each test class.
#define PBA_REGISTER_TEST(TestClass)                                                                         \
    [[maybe_unused]] static const auto &registered##TestClass =                                              \
        pba_test::factories.emplace_back([] { return std::unique_ptr<QObject>(new TestClass); })

// Stands once in a program.
#define PBA_TEST_MAIN(Application)                                                                           \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        QTEST_SET_MAIN_SOURCE_PATH                                                                           \
        Application application(argc, argv);                                                                 \
        bool failed = pba_test::factories.empty();                                                           \
        for (const auto make : pba_test::factories)                                                          \
            failed |= QTest::qExec(make().get(), argc, argv) != 0;                                           \
        return failed;                                                                                       \
    }
