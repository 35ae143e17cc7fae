#pragma once

/// The exit codes of the program.
enum class ExitCode : int
{
    Ok = 0,
    ProblemsFound = 1, ///< problems or differences were found, or something was left out
    Usage = 2,         ///< the command line is wrong
    NotReadable = 3,   ///< a file or the charger cannot be read or written
    InternalFault = 4  ///< a fault of this program
};
