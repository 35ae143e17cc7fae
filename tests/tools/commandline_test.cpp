#include "support/bundleprogram.h"

#include <QRegularExpression>

using CommandLineTest = BundleProgramTest;

TEST_F(CommandLineTest, HelpNamesEveryCommand)
{
    const ProgramRun help = runProfiles({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* command : {"check", "convert", "show", "diff", "bundle"}) {
        EXPECT_TRUE(contains(help.output, QByteArray("\n  ") + command)) << command;
    }
    const ProgramRun bundleHelp = run({"--help"});
    EXPECT_EQ(bundleHelp.exitCode, 0);
    for (const char* command : {"pack", "check", "list", "extract"}) {
        EXPECT_TRUE(contains(bundleHelp.output, QByteArray("\n  ") + command)) << command;
    }
}

TEST_F(CommandLineTest, EveryCommandHasItsOwnHelp)
{
    for (const char* command : {"pack", "check", "list", "extract"}) {
        const ProgramRun help = run({command, "--help"});
        EXPECT_EQ(help.exitCode, 0) << command;
        EXPECT_TRUE(contains(help.output, "bundle " + QByteArray(command) + " [options]"));
    }
}

TEST_F(CommandLineTest, VersionIsADottedNumber)
{
    const ProgramRun version = runProfiles({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(contains(QString::fromUtf8(version.output),
                         QRegularExpression("^kelvaron-profiles \\d+(\\.\\d+)*\n$")))
        << version.output;
}

TEST_F(CommandLineTest, RefusesAWrongCommandLine)
{
    expectRefused(runProfiles({}), 2, "no command given");
    expectRefused(runProfiles({"unpack"}), 2, "unknown command \"unpack\"");
    expectRefused(runProfiles({"check"}), 2, "check: no file given");
    expectRefused(run({}), 2, "bundle: no command given");
    expectRefused(run({"unpack"}), 2, "unknown command \"unpack\"");
    expectRefused(run({"check"}), 2, "no file given");
    expectRefused(run({"list"}), 2, "no file given");
    expectRefused(run({"list", "a", "b"}), 2, "unexpected argument \"b\"");
    expectRefused(runProfiles({"check", "--colour", "a"}), 2, "colour");
    expectRefused(run({"list", "--colour", "a"}), 2, "colour");
}
