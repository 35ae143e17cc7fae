// Starts after another version was installed, or after something was deleted or damaged.

#include "support/launchertest.h"

TEST_F(Launcher, UpgradeReplacesTheProgramAndWhatCameWithIt)
{
    shipFiles();
    launchEditor({});
    changeProgram();
    write(installed + "/files/supl.mac", "newer uploader");
    QFile::rename(installed + "/files/v1.0.0.kelvaron", installed + "/files/v1.0.1.kelvaron");
    launchEditor({});
    expectSameFile(folder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
    EXPECT_EQ(contentOf(files + "/supl.mac"), "newer uploader");
    EXPECT_TRUE(QFile::exists(files + "/v1.0.1.kelvaron"));
    EXPECT_TRUE(QFile::exists(files + "/v1.0.0.kelvaron"));
    expectNoLitter();
}

TEST_F(Launcher, UpgradeDoesNotDisturbARunningEditor)
{
    const auto running = launchEditor({"--demo"});
    changeProgram();
    launchEditor({"--demo"});
    EXPECT_EQ(running->process.state(), QProcess::Running);
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
}

TEST_F(Launcher, UpgradeLeavesTheUsersBundlesAlone)
{
    shipFiles();
    launchEditor({});
    const QByteArray own = contentOf(files + "/v1.0.0.kelvaron") + "changed by the user";
    write(files + "/v1.0.0.kelvaron", own);
    write(files + "/v0.5.kelvaron", "another");
    write(installed + "/files/v1.0.0.kelvaron",
          contentOf(installed + "/files/v1.0.0.kelvaron") + "newer");
    for (int start = 0; start < 2; ++start) {
        launchEditor({});
        EXPECT_TRUE(contentOf(files + "/v1.0.0.kelvaron") == own);
        EXPECT_EQ(contentOf(files + "/v0.5.kelvaron"), "another");
    }
}

TEST_F(Launcher, UpgradeLeavesTheUsersUploaderAlone)
{
    shipFiles();
    QDir().mkpath(files);
    write(files + "/supl.mac", "the user's");
    launchEditor({});
    EXPECT_EQ(contentOf(files + "/supl.mac"), "the user's");
    write(installed + "/files/supl.mac", "newer uploader");
    launchEditor({});
    EXPECT_EQ(contentOf(files + "/supl.mac"), "the user's");
}

TEST_F(Launcher, UpgradeLeavesProfilesSettingsAndTheChargerAlone)
{
    launchEditor({"--demo"});
    const QStringList kept = {"saved_profiles/mine.xml",   "saved_profiles/mine.new.1",
                              "backup_before_replace.xml", "logs/log.txt",
                              "charger-memory.bin",        "serial_ports.txt"};
    for (const QString& name : kept) {
        write(demoFiles + '/' + name, "the user's");
    }
    changeProgram();
    write(installed + "/demo/serial_ports.txt", "/dev/newer\n");
    launchEditor({"--demo"});
    for (const QString& name : kept) {
        EXPECT_EQ(contentOf(demoFiles + '/' + name), "the user's") << name;
    }
}

TEST_F(Launcher, DeletedBundleStaysDeletedWhileThereIsAnother)
{
    shipFiles();
    launchEditor({});
    ASSERT_TRUE(QFile::rename(files + "/v1.0.0.kelvaron", files + "/v0.9.kelvaron"));
    launchEditor({});
    EXPECT_FALSE(QFile::exists(files + "/v1.0.0.kelvaron"));
}

TEST_F(Launcher, WhatTheEditorCannotStartWithoutIsGivenAgain)
{
    shipFiles();
    launchEditor({});
    ASSERT_TRUE(QFile::remove(files + "/v1.0.0.kelvaron"));
    ASSERT_TRUE(QFile::remove(files + "/supl.mac"));
    ASSERT_TRUE(QFile::remove(folder + "/KelvaronProfileEditor"));
    launchEditor({});
    EXPECT_TRUE(QFile::exists(files + "/v1.0.0.kelvaron"));
    EXPECT_TRUE(QFile::exists(files + "/supl.mac"));
}

TEST_F(Launcher, DamagedProgramIsReplaced)
{
    launchEditor({"--demo"});
    writeProgram(demoFolder + "/KelvaronProfileEditor", "");
    launchEditor({"--demo"});
    expectSameFile(demoFolder + "/KelvaronProfileEditor", installed + "/KelvaronProfileEditor");
}

TEST_F(Launcher, LitterOfAKilledStartIsRemoved)
{
    // No process has this number: it is above the greatest that the system gives.
    write(demoFolder + "/KelvaronProfileEditor.new.99999999", "half");
    launchEditor({"--demo"});
    expectNoLitter();
}
