#pragma once

#include "chargermemory.h"
#include "commandline.h"
#include "devicedescription.h"
#include "failure.h"
#include "faults.h"
#include "memoryword.h"

#include <QLockFile>
#include <QVector>

#include <functional>
#include <memory>

/// One run of the uploader on the simulated charger.
class Uploader
{
public:
    /// `folder` is where the charger's memory and the other files of the simulator are.
    Uploader(Job runJob, const QString& folder);

    /// Does the job and reports its progress on standard output.
    ExitCode run(const QStringList& arguments);

private:
    /// Does a part of some work: items from the first number up to, but not including, the second.
    using Work = std::function<void(int, int)>;

    ExitCode doJob();

    /// Adds a line to the log of runs for tests. A log that cannot be written does not make the run
    /// fail.
    void log(const QString& line) const;
    void openPort();
    void greet();
    void erase();
    void write();
    void read();
    void reset();
    void flash();

    void countReset();

    void usePace();

    /// Begins a stage of a flash run, or the only stage of any other run.
    void enterStage(const QString& stage = QString());

    /// Simulates the faults in the middle of a stage. The memory contains the work done so far.
    void passMiddle();

    void eraseRange(quint32 low, quint32 high);
    QVector<MemoryWord> load(const QString& file) const;
    void program(const QVector<MemoryWord>& words);
    void verify(const QVector<MemoryWord>& words);
    void doWithProgress(const QString& verb, int count, const Work& work);

    Job job;
    QString folderPath;
    Faults faults;
    Console console;
    DeviceDescription device;
    QLockFile lock;
    std::unique_ptr<ChargerMemory> memory;
};
