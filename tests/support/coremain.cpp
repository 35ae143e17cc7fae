#include "support/ownenvironment.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    ::testing::InitGoogleTest(&argc, argv);
    // Death tests re-run the binary instead of forking a process that may hold threads.
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
