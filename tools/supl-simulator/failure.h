#pragma once

#include <QString>

/// The exit codes of a run.
enum class ExitCode : int
{
    Ok = 0,         ///< everything asked for was done
    Failed = 1,     ///< the charger or a file given to it failed
    Usage = 2,      ///< the command line is wrong
    BrokenSetup = 3 ///< a file of the simulator itself cannot be used
};

/// An error that ends the run with a line of output and an exit code.
struct Failure
{
    QString message;
    ExitCode code = ExitCode::Failed;
};
