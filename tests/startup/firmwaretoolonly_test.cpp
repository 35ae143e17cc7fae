// The editor started with "-f": only the firmware tool window.

#include "support/scriptedinstallation.h"

namespace
{
class FirmwareToolOnlyTest : public StartupTest
{
protected:
    void SetUp() override
    {
        StartupTest::SetUp();
        writeBundle("v1.kelvaron");
    }

    static void expectToolOnly(const Start& started)
    {
        EXPECT_FALSE(started.crashed) << started.transcript();
        EXPECT_EQ(started.exitCode, 0) << started.transcript();
        EXPECT_EQ(started.count("FIRMWARE TOOL SHOWN"), 1) << started.transcript();
        EXPECT_FALSE(started.mainWindowShown()) << started.transcript();
        EXPECT_EQ(started.boxes().size(), 0) << started.transcript();
    }

    static void expectMainWindowOnly(const Start& started)
    {
        expectStarted(started);
        EXPECT_EQ(started.count("FIRMWARE TOOL SHOWN"), 0) << started.transcript();
    }
};

TEST_F(FirmwareToolOnlyTest, MainWindowIsNeverShownAndClosingTheToolEndsWithZero)
{
    expectToolOnly(start({"-f"}));
}

TEST_F(FirmwareToolOnlyTest, ExitCodeIsZeroWhateverTheEventLoopWouldGive)
{
    expectToolOnly(startWith({{"SCRIPTED_EXIT_CODE", "7"}}, {"-f"}));
}

TEST_F(FirmwareToolOnlyTest, StartRunsInFullBeforeTheTool)
{
    const Start started = start({"-f"});
    EXPECT_LT(started.lines.indexOf("Starting the UI"),
              started.lines.indexOf("FIRMWARE TOOL SHOWN"));
    EXPECT_EQ(started.count("Current working directory : "), 1);
    EXPECT_EQ(started.count("CB File Location : "), 1);
    EXPECT_TRUE(exists("device.txt"));
}

TEST_F(FirmwareToolOnlyTest, ArgumentCountsInAnyPosition)
{
    expectToolOnly(start({"profiles.xml", "-f", "--quiet"}));
}

TEST_F(FirmwareToolOnlyTest, OtherArgumentsShowTheMainWindow)
{
    expectMainWindowOnly(start({"-F"}));
    expectMainWindowOnly(start({"-ff"}));
    expectMainWindowOnly(start({"f"}));
    expectMainWindowOnly(start({"--f"}));
    expectMainWindowOnly(start({"-f "}));
}
} // namespace
