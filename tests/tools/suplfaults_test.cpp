#include "support/suplprogram.h"
#include "support/thorough.h"

namespace
{
class SuplFaultsTest : public SuplTest
{
protected:
    void SetUp() override
    {
        SuplTest::SetUp();
        writeFile(work("hexToFlash.hex"), hexFile(0x0C00, pattern(4096)));
        writeFile(work("profiles.hex"), hexFile(0x9C00, pattern(2048)));
    }

    /// The run of a step by the step's name in the faults file.
    static QStringList argumentsOf(const QString& step)
    {
        if (step == "erase") {
            return eraseProfiles();
        }
        if (step == "write") {
            return write("profiles.hex");
        }
        if (step == "read") {
            return readProfiles("out.hex");
        }
        return step == "reset" ? reset() : flash();
    }

    static QStringList steps() { return {"erase", "write", "read", "reset", "flash"}; }

    /// Starts a run, waits until its output contains the words, and kills it while it hangs.
    void expectHangsAfter(const QStringList& arguments, const QByteArray& words) const
    {
        QProcess process;
        process.setWorkingDirectory(work(QString()));
        process.start(home("supl.mac"), arguments);
        QByteArray output;
        while (!output.contains(words)) {
            ASSERT_TRUE(process.waitForReadyRead(patience)) << output;
            output += process.readAllStandardOutput();
        }
        EXPECT_FALSE(process.waitForFinished(300)) << output;
        process.kill();
        ASSERT_TRUE(process.waitForFinished(patience));
    }

    /// The image written by the last read, as interpreted by another tool.
    QByteArray imageRead() const
    {
        srecCat({"out.hex", "-intel", "-offset", "-0x13800", "-o", "out.bin", "-binary"});
        return contentOf(work("out.bin"));
    }
};
} // namespace

TEST_F(SuplFaultsTest, AFileThatIsNotUnderstoodIsTold)
{
    const auto expectTold = [this](const QByteArray& text, const QByteArray& words) {
        writeFile(home("supl-faults.txt"), text);
        expectFailure(reset(), words, 3);
        EXPECT_FALSE(QFile::exists(home("charger-memory.bin")));
    };
    expectTold("garbel = data\n", "supl-faults.txt: line 1: unknown key \"garbel\"");
    expectTold("# fine\n\nlog = yes\nCrash = yes\n", "line 4: unknown key \"Crash\"");
    expectTold("program.crash = yes\n", "line 1: unknown step \"program\"");
    expectTold(".crash = yes\n", "line 1: the step is missing");
    expectTold("crash\n", "line 1 is not \"key = value\"");
    expectTold("= yes\n", "line 1 is not \"key = value\"");
    expectTold("crash = maybe\n", "line 1: crash cannot be \"maybe\"");
    expectTold("crash =\n", "line 1: crash cannot be \"\"");
    expectTold("exit-code = 256\n", "line 1: exit-code cannot be \"256\"");
    expectTold("exit-code = -1\n", "line 1: exit-code cannot be \"-1\"");
    expectTold("pace = 20\n", "line 1: pace cannot be \"20\"");
    expectTold("pace = 1000000%\n", "line 1: pace cannot be");
    expectTold("delay = 10000000\n", "line 1: delay cannot be");
    expectTold("garble = all\n", "line 1: garble cannot be \"all\"");
    expectTold("absent-port =\n", "line 1: absent-port cannot be \"\"");
    expectTold("stall = no\nstall = no\n", "line 2: stall is given twice");
    expectTold(QByteArray(200000, '#'), "supl-faults.txt is too large");
}

TEST_F(SuplFaultsTest, NoPort)
{
    setFaults("no-port = yes\n");
    for (const QString& step : steps()) {
        expectFailure(argumentsOf(step), "Can not open comport\n");
    }
    EXPECT_FALSE(QFile::exists(home("charger-memory.bin")));
}

TEST_F(SuplFaultsTest, NoBootloader)
{
    setFaults("no-bootloader = yes\n");
    for (const QString& step : steps()) {
        const ProgramRun failed = run(argumentsOf(step));
        EXPECT_EQ(failed.exitCode, 1);
        EXPECT_EQ(failed.output, "Opening port \"ttyUSB0\"\n"
                                 "Bootloader Version is unknown\nTimeout\n");
    }
    EXPECT_EQ(memory(), blank(memorySize));
}

TEST_F(SuplFaultsTest, NoStx)
{
    setFaults("no-stx = yes\n");
    for (const QString& step : steps()) {
        const ProgramRun failed = run(argumentsOf(step));
        EXPECT_EQ(failed.exitCode, 1);
        EXPECT_EQ(failed.output, "Opening port \"ttyUSB0\"\nno stx char\n");
    }
    EXPECT_EQ(memory(), blank(memorySize));
}

TEST_F(SuplFaultsTest, AnExitCodeComesBeforeTheStepHasDoneAnything)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    for (const int code : {0, 1, 7, 99, 255}) {
        setFaults("exit-code = " + QByteArray::number(code) + '\n');
        for (const QString& step : steps()) {
            const ProgramRun ended = run(argumentsOf(step));
            EXPECT_FALSE(ended.crashed);
            EXPECT_EQ(ended.exitCode, code) << step;
        }
    }
    EXPECT_EQ(memory(), before);
    EXPECT_FALSE(QFile::exists(work("out.hex")));
    EXPECT_FALSE(QFile::exists(home("charger-state.txt")));
}

TEST_F(SuplFaultsTest, AFaultOfOneStepLeavesTheOthersAlone)
{
    for (const QString& faulty : steps()) {
        setFaults(faulty.toUtf8() + ".exit-code = 7\n");
        for (const QString& step : steps()) {
            ASSERT_TRUE(QFile::remove(home("charger-memory.bin")) || step == "erase");
            EXPECT_EQ(run(argumentsOf(step)).exitCode, step == faulty ? 7 : 0)
                << step << " with a faulty " << faulty;
        }
    }
}

TEST_F(SuplFaultsTest, TheNearerOfTwoFaultsWins)
{
    setFaults(
        "exit-code = 5\nwrite.exit-code = 6\nflash.exit-code = 7\nflash-load.exit-code = 8\n");
    EXPECT_EQ(run(eraseProfiles()).exitCode, 5);
    EXPECT_EQ(run(write("profiles.hex")).exitCode, 6);
    EXPECT_EQ(run(flash()).exitCode, 7);
    setFaults("flash-load.exit-code = 8\nno-port = yes\nread.no-port = no\n");
    EXPECT_EQ(run(readProfiles("out.hex")).exitCode, 0);
    EXPECT_EQ(run(flash()).exitCode, 1);
    setFaults("flash.verify-fail = yes\nflash-verify.verify-fail = no\n");
    EXPECT_EQ(run(flash()).exitCode, 0);
}

TEST_F(SuplFaultsTest, ACrashIsReal)
{
    setFaults("crash = yes\n");
    for (const QString& step : steps()) {
        EXPECT_TRUE(run(argumentsOf(step)).crashed) << step;
    }
    EXPECT_FALSE(QFile::exists(work("out.hex")));
    EXPECT_FALSE(QFile::exists(home("charger-state.txt")));
    EXPECT_TRUE(QDir(work(QString())).entryList({"core*"}).isEmpty());
    setFaults(QByteArray());
    expectDone(reset()); // no lock is left
}

TEST_F(SuplFaultsTest, ACrashWhileWritingLeavesHalfOfIt)
{
    setFaults("write.crash = yes\n");
    EXPECT_TRUE(run(write("profiles.hex")).crashed);
    EXPECT_EQ(memory(0x9C00, 0x9E00), pattern(2048).left(1024));
    EXPECT_EQ(memory(0x9E00, 0xA000), blank(1024));
}

TEST_F(SuplFaultsTest, ACrashWhileErasingLeavesHalfOfThePages)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    setFaults("crash = yes\n");
    EXPECT_TRUE(run(with({"-E", "0x8C00", "0x9C00"})).crashed);
    EXPECT_EQ(memory(0x8C00, 0x9400), blank(4096));
    EXPECT_EQ(memory(0x9400, 0x9C00), before.mid(2 * 0x9400, 4096));
}

TEST_F(SuplFaultsTest, AStallLastsUntilTheProgramIsKilled)
{
    setFaults("stall = yes\n");
    expectHangsAfter(eraseProfiles(), "Erasing 0x9C00 to 0xA000\n");
    expectHangsAfter(write("profiles.hex"), "Writing 50%\n");
    expectHangsAfter(readProfiles("out.hex"), "Reading 50%\n");
    expectHangsAfter(reset(), "Resetting\n");
    expectHangsAfter(flash(), "Erasing 0x0C00 to 0xA000\n");
    setFaults(QByteArray());
    expectDone(reset());
}

TEST_F(SuplFaultsTest, AFlashRunStallsInTheStageThatIsNamed)
{
    setFaults("flash-load.stall = yes\n");
    expectHangsAfter(flash(), "All flash above bldr erased\n");
    setFaults("flash-write.stall = yes\n");
    expectHangsAfter(flash(), "Writing 50%\n");
    setFaults("flash-verify.stall = yes\n");
    expectHangsAfter(flash(), "Verifying 50%\n");
}

TEST_F(SuplFaultsTest, ADelayIsWaitedForAtAnyPace)
{
    setFaults("write.delay = 700\n");
    QElapsedTimer timer;
    timer.start();
    expectDone(write("profiles.hex"));
    EXPECT_GE(timer.elapsed(), 700);
}

TEST_F(SuplFaultsTest, AFloodIsPrintedAndTheStepGoesOn)
{
    setFaults("flood = 20000\n");
    for (const QString& step : steps()) {
        const ProgramRun done = run(argumentsOf(step));
        EXPECT_EQ(done.exitCode, 0);
        const int lines = step == "flash" ? 4 * 20000 : 20000;
        EXPECT_EQ(done.output.count("noise "), lines) << step;
    }
}

TEST_F(SuplFaultsTest, AWriteProtectedMemoryKeepsItsContent)
{
    const QByteArray before = pattern(memorySize, 7);
    writeFile(home("charger-memory.bin"), before);
    setFaults("write-protect = yes\n");
    expectFailure(eraseProfiles(), "Erase failed: the memory is write protected");
    expectFailure(write("profiles.hex"), "Flash Write failed at 0x9C00: the memory is write");
    expectFailure(flash(), "Erase failed: the memory is write protected");
    EXPECT_EQ(memory(), before);
    expectDone(readProfiles("out.hex"));
    EXPECT_EQ(imageRead(), before.mid(2 * 0x9C00));

    setFaults("write.write-protect = yes\n");
    expectDone(eraseProfiles());
    expectFailure(write("profiles.hex"), "Flash Write failed at 0x9C00");
    EXPECT_EQ(memory(0x9C00, 0xA000), blank(2048));
}

TEST_F(SuplFaultsTest, AVerificationFails)
{
    setFaults("verify-fail = yes\n");
    const ProgramRun failed = run(flash());
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(contains(failed.output, "Flash Write success\n"));
    EXPECT_TRUE(failed.output.endsWith("verify fail at 0x0C00\n"));
    EXPECT_FALSE(failed.output.contains("Verified Flash OK"));
}

TEST_F(SuplFaultsTest, AGarbledByteHasAFittingChecksum)
{
    expectDone(write("profiles.hex"));
    setFaults("garble = data\n");
    expectDone(readProfiles("out.hex"));
    const QByteArray image = pattern(2048);
    const QByteArray garbled = imageRead();
    EXPECT_EQ(garbled.at(0), image.at(0) ^ 1);
    EXPECT_EQ(garbled.mid(1), image.mid(1));
    EXPECT_EQ(memory(0x9C00, 0xA000), image);
}

TEST_F(SuplFaultsTest, AGarbledChecksumChangesNoData)
{
    expectDone(write("profiles.hex"));
    expectDone(readProfiles("good.hex"));
    setFaults("garble = checksum\n");
    expectDone(readProfiles("out.hex"));
    const QList<QByteArray> good = contentOf(work("good.hex")).split('\n');
    QList<QByteArray> bad = contentOf(work("out.hex")).split('\n');
    EXPECT_EQ(bad.at(1).chopped(2), good.at(1).chopped(2));
    EXPECT_EQ(bad.at(1).right(2).toInt(nullptr, 16), good.at(1).right(2).toInt(nullptr, 16) ^ 1);
    bad[1] = good.at(1);
    EXPECT_EQ(bad, good);
    expectFailure(write("out.hex"), "line 2: wrong checksum");
}

TEST_F(SuplFaultsTest, ATruncatedFileEndsInsideALine)
{
    expectDone(write("profiles.hex"));
    expectDone(readProfiles("good.hex"));
    setFaults("truncate = yes\n");
    expectDone(readProfiles("out.hex"));
    const QByteArray good = contentOf(work("good.hex"));
    const QByteArray cut = contentOf(work("out.hex"));
    EXPECT_TRUE(startsWith(good, cut));
    EXPECT_LT(cut.size(), good.size() * 3 / 4);
    EXPECT_GT(cut.size(), good.size() / 4);
    EXPECT_NE(cut.back(), '\n');
    EXPECT_FALSE(cut.contains(":00000001FF"));
}

TEST_F(SuplFaultsTest, FaultsOfAReadHoldForTheSmallestOne)
{
    for (const char* fault : {"garble = data\n", "garble = checksum\n", "truncate = yes\n"}) {
        setFaults(fault);
        expectDone(with({"-l", "0x9C00", "0x9C02", "out.hex"}));
        EXPECT_NE(contentOf(work("out.hex")),
                  ":020000040001F9\n:04380000FFFFFF00C7\n:00000001FF\n");
    }
}

TEST_F(SuplFaultsTest, TheLogTellsEveryRun)
{
    expectDone(reset());
    EXPECT_FALSE(QFile::exists(home("supl-log.txt")));
    setFaults("log = yes\nwrite.exit-code = 9\nread.crash = yes\n");
    expectDone(eraseProfiles());
    EXPECT_EQ(run(write("profiles.hex")).exitCode, 9);
    EXPECT_TRUE(run(readProfiles("two words.hex")).crashed);
    EXPECT_EQ(contentOf(home("supl-log.txt")),
              "\"-s\" \"ttyUSB0\" \"-h\" \"-V\" \"-E\" \"0x9C00\" \"0xA000\"\n"
              "exit code 0\n"
              "\"-s\" \"ttyUSB0\" \"-h\" \"-V\" \"-w\" \"profiles.hex\"\n"
              "exit code 9\n"
              "\"-s\" \"ttyUSB0\" \"-h\" \"-V\" \"-l\" \"0x9C00\" \"0xA000\" \"two words.hex\"\n");
}

TEST_F(SuplFaultsTest, ThePaceSetsThePauses)
{
    THOROUGH_ONLY();
    const auto durationAt = [this](const QByteArray& pace) {
        writeFile(home("supl-faults.txt"), pace);
        QElapsedTimer timer;
        timer.start();
        expectDone(eraseProfiles());
        return timer.elapsed();
    };
    const qint64 normal = durationAt("");
    EXPECT_GE(normal, 900);
    const auto isFasterWithoutPauses = [&] { return durationAt("pace = 0%\n") < normal - 450; };
    EXPECT_TRUE(waitFor(isFasterWithoutPauses)); // a busy machine makes its own pauses
    EXPECT_GE(durationAt("pace = 200%\n"), 1800);
    EXPECT_GE(durationAt("pace = 100 ms\n"), 700); // seven pauses
}
