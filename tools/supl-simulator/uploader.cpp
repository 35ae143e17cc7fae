#include "uploader.h"

#include "crash.h"
#include "intelhexreader.h"
#include "intelhexwriter.h"
#include "keyvaluefile.h"
#include "readfile.h"
#include "wholefile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QThread>

#include <algorithm>
#include <utility>

namespace
{
constexpr int shortPause = 60;
constexpr int longPause = 250;
constexpr int transferPause = 100; ///< around a marker that no reader waits for

/// Returns how often the charger was reset; the file may be missing.
int resetsIn(const QString& path)
{
    if (!QFileInfo::exists(path)) {
        return 0;
    }
    const auto entries = KeyValueFile::read(path, ExitCode::BrokenSetup);
    bool isNumber = false;
    int count = 0;
    if (entries && entries->size() == 1 && entries->first().key == QLatin1String("resets")) {
        count = entries->first().value.toInt(&isNumber);
    }
    if (!isNumber || count < 0 || count >= 1000000000) {
        throw Failure{QFileInfo(path).fileName() + QStringLiteral(" is damaged"),
                      ExitCode::BrokenSetup};
    }
    return count;
}
} // namespace

Uploader::Uploader(Job runJob, const QString& folder)
    : job(std::move(runJob)), folderPath(folder + QLatin1Char('/')),
      lock(folderPath + QLatin1String("charger-memory.lock"))
{
    lock.setStaleLockTime(0); // a lock is valid until its run has ended
}

ExitCode Uploader::run(const QStringList& arguments)
{
    ExitCode code = ExitCode::Ok;
    try {
        faults = Faults(folderPath + QLatin1String("supl-faults.txt"));
        faults.enter(job.step());
        usePace();
        log(QLatin1Char('"') + arguments.join(QStringLiteral("\" \"")) + QLatin1Char('"'));
        code = doJob();
    } catch (const Failure& failure) {
        console.marker(failure.message);
        code = failure.code;
    }
    log(QStringLiteral("exit code %1").arg(static_cast<int>(code)));
    return code;
}

void Uploader::log(const QString& line) const
{
    QFile file(folderPath + QLatin1String("supl-log.txt"));
    if (faults.isOn("log") && file.open(QIODevice::Append)) {
        file.write(line.toUtf8() + '\n');
    }
}

ExitCode Uploader::doJob()
{
    openPort();
    device = DeviceDescription::read(QStringLiteral("device.txt"));
    memory = std::make_unique<ChargerMemory>(folderPath + QLatin1String("charger-memory.bin"));
    greet();
    switch (job.operation) {
    case Operation::Erase:
        erase();
        break;
    case Operation::Write:
        write();
        break;
    case Operation::Read:
        read();
        break;
    case Operation::Reset:
        reset();
        break;
    case Operation::Flash:
        flash();
        break;
    case Operation::Help:
        return ExitCode::Usage;
    }
    return ExitCode::Ok;
}

void Uploader::openPort()
{
    console.line(QStringLiteral("Opening port \"%1\"").arg(job.port), shortPause);
    const QStringList absentPorts = faults.value("absent-port").split(QLatin1Char(' '));
    // A port that another run uses cannot be opened. If the lock cannot be written, neither can the
    // files in which two runs could interfere.
    const bool isInUse = !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
    if (job.port.isEmpty() || absentPorts.contains(job.port) || faults.isOn("no-port") || isInUse) {
        throw Failure{QStringLiteral("Can not open comport")};
    }
}

void Uploader::greet()
{
    if (faults.isOn("no-stx")) {
        throw Failure{QStringLiteral("no stx char")};
    }
    if (faults.isOn("no-bootloader")) {
        throw Failure{QStringLiteral("Bootloader Version is unknown\nTimeout")};
    }
    console.marker(QStringLiteral("Bootloader Version is 1.20"));
}

void Uploader::usePace()
{
    console.setPace(faults.pace(), job.operation == Operation::Flash ? longPause : transferPause);
}

void Uploader::enterStage(const QString& stage)
{
    faults.enter(job.step(), stage);
    usePace();
    if (const std::optional<int> code = faults.number("exit-code")) {
        throw Failure{QStringLiteral("Ended by supl-faults.txt"), static_cast<ExitCode>(*code)};
    }
}

void Uploader::passMiddle()
{
    memory->save();
    for (int i = 1; i <= faults.number("flood").value_or(0); ++i) {
        console.line(QStringLiteral("noise %1").arg(i), 0);
    }
    QThread::msleep(static_cast<unsigned long>(faults.number("delay").value_or(0)));
    if (faults.isOn("crash")) {
        crash();
    }
    while (faults.isOn("stall")) {
        QThread::sleep(1);
    }
}

void Uploader::erase()
{
    enterStage();
    device.checkErasable(job.low, job.high);
    eraseRange(job.low, job.high);
    console.marker(QStringLiteral("Erase success"));
}

void Uploader::write()
{
    enterStage();
    const QVector<MemoryWord> words = load(job.file);
    console.marker(QStringLiteral("hex file loaded"));
    program(words);
    console.marker(QStringLiteral("Flash Write success"));
}

void Uploader::read()
{
    enterStage();
    device.checkReadable(job.low, job.high);
    doWithProgress(QStringLiteral("Reading"), 0, [](int, int) {});
    QByteArray text = IntelHexWriter::fileText(job.low / ChargerMemory::addressesPerWord
                                                   * ChargerMemory::bytesPerWord,
                                               memory->read(job.low, job.high));
    if (faults.value("garble") == QLatin1String("data")) {
        text = ReadFile::withChangedByte(text);
    } else if (faults.value("garble") == QLatin1String("checksum")) {
        text = ReadFile::withWrongChecksum(text);
    }
    ReadFile::save(job.file, faults.isOn("truncate") ? ReadFile::cutOff(text) : text);
    console.marker(QStringLiteral("Read success"));
}

void Uploader::reset()
{
    enterStage();
    console.line(QStringLiteral("Resetting"), longPause);
    passMiddle();
    countReset();
    console.marker(QStringLiteral("Reset success"));
}

void Uploader::countReset()
{
    const QString path = folderPath + QLatin1String("charger-state.txt");
    if (!WholeFile::write(path, "resets = " + QByteArray::number(resetsIn(path) + 1) + '\n')) {
        throw Failure{QFileInfo(path).fileName() + QStringLiteral(" cannot be written"),
                      ExitCode::BrokenSetup};
    }
}

void Uploader::flash()
{
    enterStage(QStringLiteral("erase"));
    eraseRange(device.bootloaderEnd, device.updateEnd);
    console.marker(QStringLiteral("All flash above bldr erased"));

    enterStage(QStringLiteral("load"));
    const QVector<MemoryWord> words = load(job.file);
    const QVector<MemoryWord> expectedWords = load(job.verifyFile);
    passMiddle();
    console.marker(QStringLiteral("hex file loaded"));

    enterStage(QStringLiteral("write"));
    program(words);
    console.marker(QStringLiteral("Flash Write success"));

    enterStage(QStringLiteral("verify"));
    verify(expectedWords);
    console.marker(QStringLiteral("Verified Flash OK"));
}

void Uploader::eraseRange(quint32 low, quint32 high)
{
    const QString range = QStringLiteral("%1 to %2").arg(addressText(low), addressText(high));
    if (faults.isOn("write-protect")) {
        throw Failure{QStringLiteral("Erase failed: the memory is write protected")};
    }
    console.line(QStringLiteral("Erasing ") + range, longPause);
    const quint32 middle = low + (high - low) / device.pageSize / 2 * device.pageSize;
    memory->erase(low, middle);
    passMiddle();
    console.wait(longPause);
    memory->erase(middle, high);
    memory->save();
    console.line(QStringLiteral("Erased ") + range, shortPause);
}

QVector<MemoryWord> Uploader::load(const QString& file) const
{
    QVector<MemoryWord> words =
        IntelHexReader(static_cast<int>(ChargerMemory::byteCount)).read(file);
    for (const MemoryWord& word : qAsConst(words)) {
        if (word.address < device.bootloaderEnd || word.address >= device.flashEnd) {
            throw Failure{QStringLiteral("%1: the word at %2 is not in the range that can be "
                                         "programmed, %3 to %4")
                              .arg(file, addressText(word.address),
                                   addressText(device.bootloaderEnd),
                                   addressText(device.flashEnd))};
        }
    }
    if (job.operation == Operation::Flash) {
        const auto isKept = [this](const MemoryWord& word) {
            return word.address >= device.updateEnd;
        };
        words.erase(std::remove_if(words.begin(), words.end(), isKept), words.end());
    }
    return words;
}

void Uploader::program(const QVector<MemoryWord>& words)
{
    const bool isProtected = faults.isOn("write-protect");
    doWithProgress(QStringLiteral("Writing"), words.size(), [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            const MemoryWord& word = words.at(i);
            if (isProtected || !memory->program(word.address, word.value)) {
                memory->save();
                throw Failure{QStringLiteral("Flash Write failed at %1: the memory %2")
                                  .arg(addressText(word.address),
                                       isProtected ? QStringLiteral("is write protected")
                                                   : QStringLiteral("had not been erased"))};
            }
        }
    });
    memory->save();
}

void Uploader::verify(const QVector<MemoryWord>& words)
{
    const bool isToFail = faults.isOn("verify-fail");
    doWithProgress(QStringLiteral("Verifying"), words.size(), [&](int first, int last) {
        for (int i = first; i < last; ++i) {
            if (isToFail || memory->word(words.at(i).address) != words.at(i).value) {
                throw Failure{
                    QStringLiteral("verify fail at %1").arg(addressText(words.at(i).address))};
            }
        }
    });
}

void Uploader::doWithProgress(const QString& verb, int count, const Work& work)
{
    const bool isFlash = job.operation == Operation::Flash;
    const int step = isFlash ? 5 : 25;
    int done = 0;
    for (int percent = 0; percent <= 100; percent += step) {
        const int target = count * percent / 100;
        work(done, target);
        done = target;
        console.line(QStringLiteral("%1 %2%").arg(verb).arg(percent), isFlash ? 120 : 60);
        if (percent == 50) {
            passMiddle();
        }
    }
}
