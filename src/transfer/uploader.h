#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

class PortTurn;

/// The external uploader, which performs all communication with the charger. It is run in the
/// working folder, once for each operation; its exit code shows whether the operation succeeded.
class Uploader
{
public:
    Uploader() = delete;

    /// The program to start: a path relative to the working folder.
    static QString program();

    /// Returns the arguments of a run: the common ones, then those of the operation.
    static QStringList arguments(const QString& portName, const QStringList& operation);

    /// Returns the lower and upper bound of the charger's profile area in the uploader's addresses.
    static QStringList profileArea();

    /// Returns whether a run that ended like this has succeeded.
    static bool hasSucceeded(int exitCode, QProcess::ExitStatus exitStatus);

    /// Discards the output of a run as it arrives; QProcess would keep any amount of it until it is
    /// read. For a process that has just been started.
    static void dropOutput(QProcess* process);

    /// Discards only the standard error of a run.
    static void dropErrorOutput(QProcess* process);

    /// Ends a run whose result is known. The process object is kept, without the buffers of its
    /// channels; it may be nullptr.
    static void end(QProcess* process);

    /// Ends a run whose result is no longer needed: its signals do not reach `owner`. The process,
    /// and its use of the port, `turn`, are deleted, at once or when the process has ended. Both
    /// may be nullptr.
    static void giveUp(QProcess* process, const QObject* owner, PortTurn* turn);

    /// Detaches a run: the process and the turn, which may be nullptr, become owned by the
    /// application and are deleted when the process has ended.
    static void detach(QProcess* process, PortTurn* turn);
};
