#pragma once

/// What the program tells the shell.
enum class ExitCode : int
{
    Ok = 0,
    Failed = 1, ///< the bundle is bad, or a file could not be read or written
    Usage = 2   ///< the command line itself is wrong
};
