#pragma once

#include "support/bundletext.h"
#include "support/filestest.h"
#include "support/programrun.h"
#include "testpaths.h"

/// Runs the real program in an empty folder that is deleted with the test.
class BundleProgramTest : public FilesTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        filesFolder = folder.path();
        writeFile("device.in", "name = test\n");
        writeFile("schema.in", smallSchema());
    }

    /// A bundle command.
    ProgramRun run(const QStringList& arguments) const
    {
        return runProfiles(QStringList{"bundle"} + arguments);
    }

    /// The program with these arguments.
    ProgramRun runProfiles(const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(KELVARON_PROFILES_EXECUTABLE, arguments);
        return endOf(process);
    }

    /// The arguments that make out.kelvaron from the two input files, followed by further ones.
    static QStringList packArguments(const QStringList& more = {})
    {
        return QStringList{"pack",      "-o",       "out.kelvaron", "--device",
                           "device.in", "--schema", "schema.in"}
               + more;
    }

    /// Runs pack and expects it to succeed.
    void pack(const QStringList& more = {"--key", "VERSION=1.2.0"}) const
    {
        const ProgramRun packed = run(packArguments(more));
        ASSERT_FALSE(packed.crashed);
        ASSERT_EQ(packed.exitCode, 0) << packed.errors;
        EXPECT_EQ(packed.errors, "");
    }

    /// The same with a header that has errors.
    void packForced(const QStringList& more = {"--key", "VERSION=1.2.0"}) const
    {
        const ProgramRun packed = run(packArguments(more + QStringList("--force")));
        ASSERT_FALSE(packed.crashed);
        ASSERT_EQ(packed.exitCode, 0) << packed.errors;
    }

    /// Expects a run to have been refused with this exit code and these words on standard error.
    static void expectRefused(const ProgramRun& result, int exitCode, const QByteArray& words)
    {
        EXPECT_FALSE(result.crashed);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_TRUE(contains(result.errors, words));
    }

    /// Samples::schema() with two more numbers.
    static QByteArray smallSchema()
    {
        return Samples::globalStruct()
               + Samples::chemistry(
                   "unsigned char low; // num, auto, 0, 9, x1, 0, \"Low\", \"V\", A, 3, 2, basic\n"
                   "unsigned char high; // num, auto, low, 9, x1, 0, \"High\", \"V\", A, low + 1, 3, "
                   "basic\n");
    }

    QTemporaryDir folder;
};
