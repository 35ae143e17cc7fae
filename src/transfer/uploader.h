#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

class PortTurn;

/// The external uploader, which does everything that is done to the charger. It is run from the
/// working folder, once for each operation; its exit code tells whether the operation succeeded.
class Uploader
{
public:
    Uploader() = delete;

    /// What to start: a path relative to the working folder.
    static QString program();

    /// The arguments of a run: those that every run gets, then those of its operation.
    static QStringList arguments(const QString& portName, const QStringList& operation);

    /// The bounds of the charger's profile area, lower and upper, as the uploader counts addresses.
    static QStringList profileArea();

    /// Whether a run that ended like this has done its work.
    static bool hasSucceeded(int exitCode, QProcess::ExitStatus exitStatus);

    /// Has what a run prints dropped as it comes; QProcess would keep it until somebody reads it,
    /// however much it is. For a process that has just been started.
    static void dropOutput(QProcess* process);

    /// The same for what it prints on its standard error alone.
    static void dropErrorOutput(QProcess* process);

    /// Ends a run that has told its result. The process stays, without the buffers of its channels;
    /// it may be nullptr.
    static void end(QProcess* process);

    /// Ends a run whose result nobody waits for any more: its signals do not reach `owner`. The process
    /// is deleted, at once or when it has ended, and so is `turn`, its use of the port. Both may be
    /// nullptr.
    static void giveUp(QProcess* process, const QObject* owner, PortTurn* turn);

    /// Leaves a run to itself: process and turn, which may be nullptr, belong to the application and
    /// are deleted when the process has ended.
    static void detach(QProcess* process, PortTurn* turn);
};
