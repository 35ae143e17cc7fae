#pragma once

#include "support/waiting.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

/// How a run of the simulated uploader ended.
struct SuplRun
{
    int exitCode = -1;
    bool crashed = true;
    QByteArray output;
    QByteArray errors;
};

/// A child that cannot write files beyond a size, as on a full disk.
class SuplProcess : public QProcess
{
public:
    int largestFile = -1; ///< bytes; negative means no limit

protected:
    void setupChildProcess() override
    {
        if (largestFile >= 0) {
            const rlimit limit = {static_cast<rlim_t>(largestFile),
                                  static_cast<rlim_t>(largestFile)};
            setrlimit(RLIMIT_FSIZE, &limit);
            std::signal(SIGXFSZ, SIG_IGN);
        }
    }
};

/// The real program in a folder of its own, started from another folder, in a hurry.
class SuplTest : public ::testing::Test
{
protected:
    static constexpr int memorySize = 81920; ///< 0xA000 addresses, two a word of four bytes

    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        ASSERT_TRUE(QDir(folder.path()).mkpath("home"));
        ASSERT_TRUE(QDir(folder.path()).mkpath("work"));
        const QByteArray source = QFile::encodeName(KELVARON_UPLOADER_SIMULATOR);
        const QByteArray target = QFile::encodeName(home("supl.mac"));
        if (link(source.constData(), target.constData()) != 0) {
            ASSERT_TRUE(QFile::copy(KELVARON_UPLOADER_SIMULATOR, home("supl.mac")));
        }
        ASSERT_TRUE(QFile::copy(KELVARON_DEMO_DIR "/device.txt", work("device.txt")));
        setFaults(QByteArray());
    }

    /// Beside the program, and in the folder that it is started in.
    QString home(const QString& name) const { return folder.filePath("home/" + name); }
    QString work(const QString& name) const { return folder.filePath("work/" + name); }

    static void writeFile(const QString& path, const QByteArray& bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
        ASSERT_EQ(file.write(bytes), bytes.size());
    }

    static QByteArray readFile(const QString& path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
        return file.readAll();
    }

    void setFaults(const QByteArray& lines) const
    {
        writeFile(home("supl-faults.txt"), "pace = 0%\n" + lines);
    }

    QByteArray memory() const { return readFile(home("charger-memory.bin")); }

    /// The memory's bytes from one address up to another.
    QByteArray memory(int low, int high) const { return memory().mid(2 * low, 2 * (high - low)); }

    /// Makes the memory blank but for these bytes from an address on.
    void setMemory(int address, const QByteArray& bytes) const
    {
        QByteArray all = blank(memorySize);
        all.replace(2 * address, bytes.size(), bytes);
        writeFile(home("charger-memory.bin"), all);
    }

    static QByteArray blank(int size) { return QByteArray("\xFF\xFF\xFF\0", 4).repeated(size / 4); }

    /// Words of three bytes that differ from each other, none of them blank, and a zero byte.
    static QByteArray pattern(int size, int seed = 1)
    {
        QByteArray bytes(size, '\0');
        unsigned state = static_cast<unsigned>(seed);
        for (int i = 0; i < size; ++i) {
            state = state * 1103515245U + 12345U;
            bytes[i] = i % 4 == 3 ? '\0' : static_cast<char>(state >> 16 & 0x7F);
        }
        return bytes;
    }

    /// A line of a HEX file, with a checksum that is off by `error`.
    static QByteArray record(int type, int address, const QByteArray& data, int error = 0)
    {
        QByteArray bytes;
        bytes.append(static_cast<char>(data.size()));
        bytes.append(static_cast<char>(address >> 8));
        bytes.append(static_cast<char>(address));
        bytes.append(static_cast<char>(type));
        bytes.append(data);
        int sum = 0;
        for (const char byte : bytes) {
            sum += static_cast<unsigned char>(byte);
        }
        bytes.append(static_cast<char>(error - sum));
        return ':' + bytes.toHex().toUpper() + '\n';
    }

    /// A whole HEX file for bytes from an address (of words) on.
    static QByteArray hexFile(int address, const QByteArray& bytes)
    {
        QByteArray text;
        for (int i = 0; i < bytes.size(); i += 16) {
            const int at = 2 * address + i;
            const char upper[] = {static_cast<char>(at >> 24), static_cast<char>(at >> 16)};
            text += record(4, 0, QByteArray(upper, 2)) + record(0, at & 0xFFFF, bytes.mid(i, 16));
        }
        return text + ":00000001FF\n";
    }

    static QStringList with(const QStringList& operation, const QString& port = "ttyUSB0")
    {
        return QStringList{"-s", port, "-h", "-V"} + operation;
    }

    static QStringList eraseProfiles() { return with({"-E", "0x9C00", "0xA000"}); }
    static QStringList write(const QString& file) { return with({"-w", file}); }
    static QStringList readProfiles(const QString& file)
    {
        return with({"-l", "0x9C00", "0xA000", file});
    }
    static QStringList reset() { return with({"-R"}); }
    static QStringList flash(const QString& file = "hexToFlash.hex")
    {
        return with({"-e", "-w", file, "-v", file});
    }

    SuplRun run(const QStringList& arguments, int largestFile = -1) const
    {
        SuplProcess process;
        process.largestFile = largestFile;
        process.setWorkingDirectory(work(QString()));
        process.start(home("supl.mac"), arguments);
        SuplRun result;
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

    void expectDone(const QStringList& arguments) const
    {
        const SuplRun done = run(arguments);
        EXPECT_FALSE(done.crashed);
        EXPECT_EQ(done.exitCode, 0) << done.output.constData();
        EXPECT_EQ(done.errors, "");
    }

    /// Expects a run to end with this exit code and these words on standard output.
    void expectFailure(const QStringList& arguments, const QByteArray& words,
                       int exitCode = 1) const
    {
        const SuplRun failed = run(arguments);
        EXPECT_FALSE(failed.crashed);
        EXPECT_EQ(failed.exitCode, exitCode) << failed.output.constData();
        EXPECT_TRUE(failed.output.contains(words)) << failed.output.constData();
        EXPECT_EQ(failed.errors, "");
    }

    /// Lets srec_cat do something in the folder of work.
    void srecCat(const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(work(QString()));
        process.start("srec_cat", arguments);
        ASSERT_TRUE(process.waitForFinished(patience)) << qPrintable(process.errorString());
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    }

    QTemporaryDir folder;
};
