#pragma once

#include "support/waiting.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// How a run of kelvaron-profiles ended.
struct ProgramRun
{
    int exitCode = -1;
    bool crashed = true;
    QByteArray output;
    QByteArray errors;
};

/// Runs the real program in an empty folder that goes away with the test.
class BundleProgramTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        writeFile("device.in", "name = test\n");
        writeFile("schema.in", smallSchema());
    }

    QString pathOf(const QString& name) const { return folder.filePath(name); }

    void writeFile(const QString& name, const QByteArray& bytes) const
    {
        QFile file(pathOf(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(name);
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    QByteArray readFile(const QString& name) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(name);
        return file.readAll();
    }

    bool exists(const QString& name) const { return QFile::exists(pathOf(name)); }

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
        ProgramRun result;
        if (!process.waitForFinished(patience)) {
            ADD_FAILURE() << "did not end: " << qPrintable(process.errorString());
            process.kill();
            process.waitForFinished(patience);
            return result;
        }
        result.crashed = process.exitStatus() != QProcess::NormalExit;
        result.exitCode = process.exitCode();
        result.output = process.readAllStandardOutput();
        result.errors = process.readAllStandardError();
        return result;
    }

    /// The arguments that make out.kelvaron from the two input files, with more behind them.
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
        ASSERT_EQ(packed.exitCode, 0) << packed.errors.constData();
        EXPECT_EQ(packed.errors, "");
    }

    /// The same with a header that has errors.
    void packForced(const QStringList& more = {"--key", "VERSION=1.2.0"}) const
    {
        const ProgramRun packed = run(packArguments(more + QStringList("--force")));
        ASSERT_FALSE(packed.crashed);
        ASSERT_EQ(packed.exitCode, 0) << packed.errors.constData();
    }

    /// Expects a run to have been refused with this exit code and these words on standard error.
    static void expectRefused(const ProgramRun& result, int exitCode, const QByteArray& words)
    {
        EXPECT_FALSE(result.crashed);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_TRUE(result.errors.contains(words)) << result.errors.constData();
    }

    static QByteArray smallSchema()
    {
        return "#define PROFILESTARTADDRESS 0x400\n"
               "struct Global { // Settings : \"Global\", global\n"
               "unsigned char type; // num, auto, 1, 1, x1, 0, \"type\", \"\", A, 1, -1, basic\n"
               "}\n"
               "struct Cell { // Settings : \"Cell\", instantiable\n"
               "unsigned char type; // num, auto, 2, 2, x1, 0, \"type\", \"\", A, 2, -1, basic\n"
               "char title[8]; // string, auto, \"Title\", A, \"one\", 0, basic\n"
               "char subtitle[8]; // string, auto, \"Subtitle\", A, \"two\", 1, basic\n"
               "unsigned char active; // bool, 1, \"active\", A, 0, -1, basic\n"
               "unsigned char isDefault; // bool, 1, \"default\", A, 0, -1, basic\n"
               "unsigned char modifiable; // bool, 6, \"modifiable\", A, 1, -1, basic\n"
               "unsigned char low; // num, auto, 0, 9, x1, 0, \"Low\", \"V\", A, 3, 2, basic\n"
               "unsigned char high; // num, auto, low, 9, x1, 0, \"High\", \"V\", A, low + 1, 3, "
               "basic\n"
               "}\n";
    }

    QTemporaryDir folder;
};
