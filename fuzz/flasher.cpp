// The uploader's output as read by the flasher: chunks separated by a byte 0x1E. Each chunk is
// searched. Two or more, for some sizes of the input, are also printed by a real process to a
// running flasher, which has to show and log what a second, simpler reading of the stages expects.

#include "firmware/firmwareflasher.h"
#include "firmware/stringmanipulation.h"
#include "support/bundletext.h"
#include "support/fuzzgui.h"
#include "support/fuzztarget.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QProcess>

#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using FirmwareTool::FirmwareFlasher;
using FirmwareTool::StringManipulation;

namespace
{
void checkSearches(const char* chunk, const std::string& text)
{
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        const std::size_t found = code == 0 ? std::string::npos : text.find(character);
        const int index = found == std::string::npos ? -1 : static_cast<int>(found);
        FUZZ_EXPECT(StringManipulation::indexOf(character, chunk) == index);
        FUZZ_EXPECT(StringManipulation::contains(character, chunk) == (index >= 0));
    }
    FUZZ_EXPECT(StringManipulation::length(chunk) == static_cast<int>(text.size()));
    const auto has = [&text](const char* words) { return text.find(words) != std::string::npos; };
    FUZZ_EXPECT(StringManipulation::matchStar1(chunk) == has("Could not find device.txt file"));
    FUZZ_EXPECT(StringManipulation::matchStar2(chunk) == has("hex file loaded"));
    FUZZ_EXPECT(StringManipulation::matchStar6(chunk) == has("verify fail"));
    FUZZ_EXPECT(StringManipulation::matchStar7(chunk) == has("failed to find input file"));
    StringManipulation::matchStar5(chunk);
}

void checkTimeoutPattern(const char* chunk, const std::string& text)
{
    const std::string version = "Bootloader Version is";
    const std::size_t found = text.find(version);
    const bool isTimeout = found != std::string::npos
                           && text.find("Timeout", found + version.size()) != std::string::npos;
    FUZZ_EXPECT(StringManipulation::containsRegex("Bootloader Version is.*Timeout", chunk)
                == isTimeout);
}

void checkPercentage(const char* chunk, const std::string& text)
{
    const std::size_t percent = text.rfind('%');
    const int percentage = StringManipulation::getPercentage(chunk);
    if (percent == std::string::npos || percent < 2) {
        FUZZ_EXPECT(percentage == -1);
        return;
    }
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    const char tens = text[percent - 2];
    const char ones = text[percent - 1];
    if (isDigit(ones) && (isDigit(tens) || tens == ' ')) {
        const int number = (tens == ' ' ? 0 : 10 * (tens - '0')) + ones - '0';
        FUZZ_EXPECT(percentage == (tens == '0' && ones == '0' ? 100 : number));
    }
}

void checkComparisons(const char* chunk, const std::string& text)
{
    const std::string half = text.substr(0, text.size() / 2);
    const int halfLength = static_cast<int>(half.size());
    FUZZ_EXPECT(StringManipulation::equals(chunk, text.c_str()));
    FUZZ_EXPECT(StringManipulation::equals(chunk, half.c_str()) == (half == text));
    FUZZ_EXPECT(StringManipulation::equalsLength(chunk, half.c_str(), halfLength));
    FUZZ_EXPECT(!StringManipulation::equalsLength(chunk, half.c_str(), halfLength + 1));
}
void checkHelpers(const QByteArray& bytes)
{
    const char* chunk = bytes.constData();
    const std::string text(chunk); // up to the first zero, as the flasher reads it
    checkSearches(chunk, text);
    checkTimeoutPattern(chunk, text);
    checkPercentage(chunk, text);
    checkComparisons(chunk, text);
    StringManipulation::printStringChars(chunk);
    const QString name = QString::fromUtf8(bytes);
    FUZZ_EXPECT(!StringManipulation::getFileName(name).contains(QLatin1Char('/')));
    FUZZ_EXPECT(StringManipulation::getComPort(name).startsWith(QStringLiteral("\\\\.\\COM")));
}

/// The state of a run after the chunks read so far.
class ExpectedRun
{
public:
    void take(const char* chunk)
    {
        const std::string text(chunk);
        const auto has = [&text](const char* words) {
            return text.find(words) != std::string::npos;
        };
        if (stage == 1) {
            takeWhileErasing(chunk, has);
        } else if (stage == 2 && has("hex file loaded")) {
            stage = 3;
        } else if (stage == 2 && has("failed to find input file")) {
            end("Firmware file not found!");
        } else if (stage == 3 && has("Flash Write success")) {
            stage = 4;
            upload = 100;
        } else if (stage == 3) {
            show(upload, chunk);
        } else if (stage == 4 && has("Verified Flash OK")) {
            verify = 100;
            end("Stay in Bootloader Mode or Reset?");
        } else if (stage == 4 && has("verify fail")) {
            end("Verification Failed. The firmware file could be corrupted.");
        } else if (stage == 4) {
            show(verify, chunk);
        }
    }

    bool hasEnded() const { return !report.isEmpty(); }

    QString report; ///< the one dialog shown; empty while the run is in progress
    int upload = 0;
    int verify = 0;

private:
    template <typename Has>
    void takeWhileErasing(const char* chunk, const Has& has)
    {
        if (has("failed to find input file")) {
            end("Firmware file not found!");
        } else if (has("All flash above bldr erased")) {
            stage = 2;
        } else if (has("Can not open comport")) {
            end("Cannot open COM port. Please try selecting a different one.");
        } else if (StringManipulation::containsRegex("Bootloader Version is.*Timeout", chunk)) {
            end("Incorrect COM port or Kelvaron is not in Bootloader");
        } else if (has("Could not find device.txt file")) {
            end("\"device.txt\" not found! Please reinstall the program.");
        } else if (has("no stx char")) {
            end("\"no stx char!\" - Known Mac OS bug. Please try again.");
        }
    }

    void end(const char* shown) { report = QString::fromLatin1(shown); }

    static void show(int& bar, const char* chunk)
    {
        const int percentage = StringManipulation::getPercentage(chunk);
        if (percentage >= 0 && percentage <= 100) {
            bar = percentage;
        }
    }

    int stage = 1;
};

/// The folder of the runs, with an uploader that prints whatever is written to a pipe.
class Bench
{
public:
    Bench()
    {
        const QString folder = FuzzTarget::scratchPath(QStringLiteral("flashing"));
        FUZZ_EXPECT(QDir().mkpath(folder));
        FUZZ_EXPECT(QDir::setCurrent(folder));
        QFile uploader(QStringLiteral("supl.mac"));
        FUZZ_EXPECT(uploader.open(QIODevice::WriteOnly));
        uploader.write("#!/bin/sh\nexec cat chunks\n");
        uploader.close();
        FUZZ_EXPECT(uploader.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        FUZZ_EXPECT(mkfifo("chunks", 0600) == 0);
        pipe = open("chunks", O_RDWR | O_CLOEXEC);
        FUZZ_EXPECT(pipe >= 0);
        QFile firmware(QStringLiteral("firmware"));
        FUZZ_EXPECT(firmware.open(QIODevice::WriteOnly));
        firmware.write(BundleText::marked("part\n").repeated(5)); // any content is valid
        form.setupUi(&window);
    }

    void run(const QList<QByteArray>& chunks)
    {
        FuzzGui::DialogAnswers answers;
        FirmwareFlasher flasher(&window, &form);
        flasher.setHexPath(QStringLiteral("firmware"));
        flasher.setClock([] { return 0; }); // the watchdog never fires
        form.submitButton->setEnabled(false);
        flasher.startFlashing();
        const QByteArray header = log();
        QByteArray sent;
        ExpectedRun expected;
        for (const QByteArray& chunk : chunks) {
            if (!chunk.isEmpty() && !expected.hasEnded()) {
                sent += chunk;
                print(chunk);
                waitUntil([&] { return log().size() >= header.size() + sent.size(); });
                expected.take(chunk.constData());
            }
        }
        if (expected.hasEnded()) {
            waitUntil([this] { return form.submitButton->isEnabled(); });
        }
        FUZZ_EXPECT(log() == header + sent);
        FUZZ_EXPECT(answers.texts()
                    == (expected.hasEnded() ? QStringList(expected.report) : QStringList()));
        FUZZ_EXPECT(form.submitButton->isEnabled() == expected.hasEnded());
        FUZZ_EXPECT(form.uploadPB->value() == expected.upload);
        FUZZ_EXPECT(form.verifyPB->value() == expected.verify);
        flasher.giveUp();
        endUploaders();
        QDir(QStringLiteral("logs")).removeRecursively();
    }

private:
    void print(const QByteArray& chunk) const
    {
        FUZZ_EXPECT(write(pipe, chunk.constData(), static_cast<std::size_t>(chunk.size()))
                    == chunk.size());
    }

    /// An uploader that has reported its result would wait for more from the pipe.
    static void endUploaders()
    {
        const QList<QProcess*> processes = qApp->findChildren<QProcess*>();
        for (QProcess* process : processes) {
            process->kill();
            process->waitForFinished();
            delete process; // with its use of the port
        }
    }

    template <typename Condition>
    static void waitUntil(const Condition& holds)
    {
        while (!holds()) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    /// Returns the content of the only log.
    static QByteArray log()
    {
        const QDir folder(QStringLiteral("logs"));
        const QStringList names = folder.entryList(QDir::Files);
        FUZZ_EXPECT(names.size() == 1);
        return FuzzTarget::contentOf(folder.filePath(names.first()));
    }

    QMainWindow window;
    Ui::KelvaronFirmwareToolWindow form;
    int pipe = -1;
};
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr char separator = '\x1E';
    constexpr std::size_t runsEvery = 4; // a run is slow: only every fourth size has one
    constexpr int mostAtOnce = 4096;     // a longer chunk might arrive in pieces
    FuzzGui::startApplication();
    static Bench& bench = *new Bench; // exists as long as the process
    const QList<QByteArray> chunks = FuzzTarget::bytesOf(data, size).split(separator);
    for (const QByteArray& chunk : chunks) {
        checkHelpers(chunk);
        if (chunk.size() > mostAtOnce) {
            return 0;
        }
    }
    if (chunks.size() > 1 && size % runsEvery == 0) {
        bench.run(chunks);
    }
    return 0;
}
