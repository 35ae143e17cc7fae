// read, write and verify, with the simulated charger under the uploader's name.

#include "serialports/portlock.h"
#include "support/profilesprogram.h"

namespace
{
const QString port = "ttyKelvaronTest";

class ChargerCommandsTest : public ProfilesProgramTest
{
protected:
    void SetUp() override
    {
        ProfilesProgramTest::SetUp();
        ASSERT_TRUE(QDir(folder.path()).mkdir("editor"));
        installProgram(KELVARON_UPLOADER_SIMULATOR, pathOf("editor/supl.mac"));
        ASSERT_TRUE(QFile::copy(KELVARON_DEMO_DIR "/device.txt", pathOf("editor/device.txt")));
        setFaults(QByteArray());
        writeFile("editor/kelvaron_chemistries.cb", schema());
    }

    /// The small schema where the charger keeps its profiles; its "Low" is stored without decimals.
    static QByteArray schema()
    {
        return smallSchema().replace("0x400", "0x9C00").replace("0, 9, x1, 0", "0, 9, x1, 1");
    }

    void setFaults(const QByteArray& lines) const
    {
        writeFile("editor/supl-faults.txt", "pace = 0%\nlog = yes\n" + lines);
    }

    ProgramRun runOnCharger(const QStringList& command, const QStringList& more = {}) const
    {
        return runProfiles(command + QStringList{"--port", port, "--folder", "editor"} + more);
    }

    /// Runs of the uploader so far, their arguments and exit codes.
    QByteArray runs() const
    {
        return exists("editor/supl-log.txt") ? contentOf("editor/supl-log.txt").replace('"', "")
                                             : QByteArray();
    }

    void writeToCharger(const QByteArray& profiles) const
    {
        writeFile("mine.xml", xml(profiles));
        const ProgramRun written = runOnCharger({"write", "mine.xml"});
        EXPECT_EQ(written.exitCode, 0) << written.errors;
        EXPECT_EQ(written.errors, "");
    }

    void expectNothingDone(const ProgramRun& result, int exitCode, const QByteArray& words) const
    {
        expectRefused(result, exitCode, words);
        EXPECT_EQ(runs(), "");
    }
};
} // namespace

TEST_F(ChargerCommandsTest, WriteVerifyAndReadRunTheUploaderAsTheEditorDoes)
{
    writeToCharger(profile(0, "one") + profile(1, "two", "1", "2", "false"));
    EXPECT_TRUE(contains(runs(), "-s ttyKelvaronTest -h -V -E 0x9C00 0xA000"));
    EXPECT_TRUE(contains(runs(), "-s ttyKelvaronTest -h -V -w /"));
    EXPECT_EQ(runs().count("exit code 0"), 2);

    const ProgramRun verified = runOnCharger({"verify", "mine.xml"});
    EXPECT_EQ(verified.exitCode, 0) << verified.errors;
    EXPECT_EQ(verified.output + verified.errors, "");
    EXPECT_TRUE(contains(runs(), "-s ttyKelvaronTest -h -V -l 0x9C00 0xA000 /"));

    EXPECT_EQ(runOnCharger({"read", "back.xml"}).exitCode, 0);
    EXPECT_EQ(runOnCharger({"read", "back.hex"}).exitCode, 0);
    for (const char* file : {"back.xml", "back.hex"}) {
        const ProgramRun compared = runProfiles({"diff", "mine.xml", file, "--folder", "editor"});
        EXPECT_EQ(compared.exitCode, 0) << compared.output << compared.errors;
    }
}

TEST_F(ChargerCommandsTest, VerifyReportsWhatTheChargerHoldsOtherwise)
{
    writeToCharger(profile(0, "one") + profile(1, "two", "1", "2", "false"));
    writeFile("mine.xml", xml(profile(0, "one", "2")));
    const ProgramRun verified = runOnCharger({"verify", "mine.xml"});
    EXPECT_EQ(verified.exitCode, 1);
    EXPECT_EQ(verified.output, "profile 1, \"one\" (Cell)\n"
                               "  Low: 2 V -> 3 V\n"
                               "only in charger:ttyKelvaronTest: profile 2, \"two\" (Cell)\n");
    const ProgramRun asJson = runOnCharger({"verify", "mine.xml", "--json"});
    EXPECT_EQ(asJson.exitCode, 1);
    EXPECT_TRUE(contains(asJson.output, "\"right\": \"charger:ttyKelvaronTest\""));
}

TEST_F(ChargerCommandsTest, WhatTheChargerCanOnlyHoldRoundedIsNoDifference)
{
    writeToCharger(profile(0, "one", "3.4", "8"));
    EXPECT_EQ(runOnCharger({"verify", "mine.xml"}).exitCode, 0);
}

TEST_F(ChargerCommandsTest, DiffTakesTheChargerAsOneOfTheTwo)
{
    writeToCharger(profile(0, "one", "3.4", "8"));
    const ProgramRun compared =
        runProfiles({"diff", "mine.xml", "charger:" + port, "--folder", "editor"});
    EXPECT_EQ(compared.exitCode, 1) << compared.errors;
    EXPECT_EQ(compared.output, "profile 1, \"one\" (Cell)\n"
                               "  Low: 3.4 V -> 3 V\n");
    EXPECT_EQ(
        runProfiles({"diff", "charger:" + port, "charger:" + port, "--folder", "editor"}).exitCode,
        0);
}

TEST_F(ChargerCommandsTest, MoreProfilesThanTheChargerTakesAreRefused)
{
    QByteArray profiles;
    for (int i = 0; i < 100; ++i) {
        profiles += profile(i, "one", "3", "4", i == 0 ? "true" : "false");
    }
    writeFile("mine.xml", xml(profiles));
    expectNothingDone(runOnCharger({"write", "mine.xml"}), 1,
                      "mine.xml: error: 100 profiles, but a HEX file takes 72\n");
}

TEST_F(ChargerCommandsTest, AFileThatWouldNotBeWrittenWholeIsRefused)
{
    writeFile("mine.xml", xml(profile(0, "one") + profile(1, "two").replace("Cell", "Other")));
    expectNothingDone(runOnCharger({"write", "mine.xml"}), 1, "there is no chemistry \"Other\"");
    writeFile("mine.xml", xml(profile(0, "one") + profile(1, "two")).chopped(30));
    expectNothingDone(runOnCharger({"write", "mine.xml"}), 1, "nothing was done");
    writeFile("mine.xml", xml(profile(0, "caf\xC3\xA9")));
    expectNothingDone(runOnCharger({"write", "mine.xml"}), 1, "the charger cannot hold the ");
    expectNothingDone(runOnCharger({"write", "absent.xml"}), 3,
                      "absent.xml: error: cannot be read");
}

TEST_F(ChargerCommandsTest, AFailureOfTheUploaderIsReported)
{
    writeFile("mine.xml", xml(profile(0, "one")));
    for (const QByteArray fault : {"no-port = yes\n", "crash = yes\n", "exit-code = 1\n"}) {
        setFaults(fault);
        expectRefused(runOnCharger({"write", "mine.xml"}), 3,
                      "ttyKelvaronTest: the profiles could not be written");
        expectRefused(runOnCharger({"read", "back.xml"}), 3,
                      "ttyKelvaronTest: the charger's profiles could not be read. Make sure");
        expectRefused(runOnCharger({"verify", "mine.xml"}), 3, "could not be read");
    }
    EXPECT_FALSE(exists("back.xml"));
    EXPECT_FALSE(runs().contains(" -w ")) << "a failed erase ends the write";
}

TEST_F(ChargerCommandsTest, ADamagedProfileIsReportedAndItsBytesAreKept)
{
    writeToCharger(profile(0, "one"));
    writeFile("editor/kelvaron_chemistries.cb",
              schema().replace("2, 2, x1", "9, 9, x1").replace("A, 2, -1", "A, 9, -1"));
    writeFile("back.xml", "older");
    expectRefused(
        runOnCharger({"read", "back.xml"}), 1,
        "charger:ttyKelvaronTest: error: a profile has a type that is not in the settings header");
    EXPECT_EQ(contentOf("back.xml"), "older");
    EXPECT_EQ(runOnCharger({"read", "back.hex"}).exitCode, 1);
    EXPECT_TRUE(startsWith(contentOf("back.hex"), ':'));
}

TEST_F(ChargerCommandsTest, APortThatAnotherProgramHasIsLeftAlone)
{
    writeFile("mine.xml", xml(profile(0, "one")));
    const PortLock lock(port);
    const QByteArray words =
        ("ttyKelvaronTest: in use by " + PortLock(port).holder() + "; nothing was done\n").toUtf8();
    for (const QStringList& command :
         {QStringList({"write", "mine.xml"}), QStringList({"verify", "mine.xml"}),
          QStringList({"read", "back.xml"})}) {
        expectNothingDone(runOnCharger(command), 3, words);
    }
}

TEST_F(ChargerCommandsTest, ThePortIsKeptFromOtherProgramsDuringARun)
{
    writeFile("wait.sh", "#!/bin/sh\n: > began\nwhile [ ! -e go ]; do sleep 0.01; done\nexit 1\n");
    ASSERT_TRUE(QFile::setPermissions(pathOf("wait.sh"), QFile::ReadOwner | QFile::ExeOwner));
    QProcess program;
    program.setWorkingDirectory(folder.path());
    program.start(KELVARON_PROFILES_EXECUTABLE, {"read", "back.xml", "--port", port, "--folder",
                                                 "editor", "--uploader", "wait.sh"});
    EXPECT_TRUE(waitFor([this] { return exists("editor/began"); }));
    const PortLock lock(port);
    EXPECT_FALSE(lock.isFree());
    EXPECT_EQ(lock.holder(), QString("kelvaron-profiles (process %1)").arg(program.processId()));
    writeFile("editor/go", "");
    ASSERT_TRUE(program.waitForFinished(patience));
    EXPECT_EQ(program.exitCode(), 3);
    EXPECT_TRUE(PortLock(port).isFree());
}

TEST_F(ChargerCommandsTest, TheNewestBundleOfTheFolderDescribesTheProfiles)
{
    writeFile("schema.in", schema().replace("\"Low\"", "\"Lowest\""));
    ASSERT_EQ(run({"pack", "-o", "editor/v1.kelvaron", "--device", "device.in", "--schema",
                   "schema.in", "--key", "VERSION=1"})
                  .exitCode,
              0);
    writeFile("mine.xml", xml(profile(0, "one")).replace("low>", "lowest>"));
    const ProgramRun shown = runProfiles({"show", "mine.xml", "--folder", "editor"});
    EXPECT_EQ(shown.exitCode, 0) << shown.errors;
    EXPECT_TRUE(contains(shown.output, "  Lowest "));
}

TEST_F(ChargerCommandsTest, AWrongCommandLineDoesNothing)
{
    writeFile("mine.xml", xml(profile(0, "one")));
    for (const char* command : {"write", "verify", "read"}) {
        expectNothingDone(runProfiles({command, "mine.xml", "--folder", "editor"}), 2,
                          "--port is missing");
    }
    expectNothingDone(runOnCharger({"read", "back.txt"}), 2, "is neither *.xml nor *.hex");
    const QStringList header{"--header", "editor/kelvaron_chemistries.cb"};
    expectNothingDone(
        runProfiles(QStringList{"write", "mine.xml", "-p", port, "--folder", "absent"} + header), 3,
        "absent: is not a folder");
    expectNothingDone(runOnCharger({"write", "mine.xml"}, {"--uploader", "absent"}), 3,
                      "absent: is not a program; specify the uploader with --uploader");
}
