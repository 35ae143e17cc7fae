#pragma once

#include "support/files.h"
#include "support/filesizelimit.h"
#include "support/programrun.h"
#include "testpaths.h"

#include <QElapsedTimer>

#include <optional>

/// The real program in a separate folder, started from another folder, with short pauses.
class SuplTest : public ::testing::Test
{
protected:
    static constexpr int memorySize = 81920; ///< 0xA000 addresses, two a word of four bytes

    void SetUp() override
    {
        ASSERT_TRUE(folder.isValid());
        ASSERT_TRUE(QDir(folder.path()).mkpath("home"));
        ASSERT_TRUE(QDir(folder.path()).mkpath("work"));
        installProgram(KELVARON_UPLOADER_SIMULATOR, home("supl.mac"));
        ASSERT_TRUE(QFile::copy(KELVARON_DEMO_DIR "/device.txt", work("device.txt")));
        setFaults(QByteArray());
    }

    /// Next to the program, and in the folder in which it is started.
    QString home(const QString& name) const { return folder.filePath("home/" + name); }
    QString work(const QString& name) const { return folder.filePath("work/" + name); }

    void setFaults(const QByteArray& lines) const
    {
        writeFile(home("supl-faults.txt"), "pace = 0%\n" + lines);
    }

    QByteArray memory() const { return contentOf(home("charger-memory.bin")); }

    /// The memory's bytes from one address up to another.
    QByteArray memory(int low, int high) const { return memory().mid(2 * low, 2 * (high - low)); }

    /// Makes the memory blank except for these bytes from an address on.
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

    /// A run on a disk that has room for files up to a size; -1 is any.
    ProgramRun run(const QStringList& arguments, int largestFile = -1) const
    {
        QProcess process;
        std::optional<FileSizeLimit> fullDisk; // which the process inherits
        if (largestFile >= 0) {
            fullDisk.emplace(largestFile);
        }
        process.setWorkingDirectory(work(QString()));
        process.start(home("supl.mac"), arguments);
        return endOf(process);
    }

    void expectDone(const QStringList& arguments) const
    {
        const ProgramRun done = run(arguments);
        EXPECT_FALSE(done.crashed);
        EXPECT_EQ(done.exitCode, 0) << done.output;
        EXPECT_EQ(done.errors, "");
    }

    /// Expects a run to end with this exit code and these words on standard output.
    void expectFailure(const QStringList& arguments, const QByteArray& words,
                       int exitCode = 1) const
    {
        const ProgramRun failed = run(arguments);
        EXPECT_FALSE(failed.crashed);
        EXPECT_EQ(failed.exitCode, exitCode) << failed.output;
        EXPECT_TRUE(contains(failed.output, words));
        EXPECT_EQ(failed.errors, "");
    }

    /// Runs srec_cat in the working folder.
    void srecCat(const QStringList& arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(work(QString()));
        process.start("srec_cat", arguments);
        ASSERT_TRUE(process.waitForFinished(patience)) << process.errorString();
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError();
    }

    QTemporaryDir folder;
};
