#pragma once

#include "support/printing.h"
#include "support/waiting.h"

#include <QProcess>

/// How a run of a program ended.
struct ProgramRun
{
    int exitCode = -1; ///< of a crash, the signal
    bool crashed = true;
    QByteArray output;
    QByteArray errors;
};

/// Waits for the end of a started program. One that does not end is killed and fails the test.
inline ProgramRun endOf(QProcess& process)
{
    if (!process.waitForFinished(patience)) {
        ADD_FAILURE() << "did not end: " << process.errorString();
        process.kill();
        process.waitForFinished(patience);
    }
    return {process.exitCode(), process.exitStatus() != QProcess::NormalExit,
            process.readAllStandardOutput(), process.readAllStandardError()};
}
