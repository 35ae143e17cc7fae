#include "look/screenscaling.h"
#include "support/ownenvironment.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    const OwnEnvironment environment;
    ::testing::InitGoogleTest(&argc, argv);
    // Death tests re-run the binary instead of forking a process that may hold threads.
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen"); // listing the tests needs no display either
    }
    ScreenScaling::use();
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
