#pragma once

#include <QString>

enum class Operation
{
    Help,
    Erase,
    Write,
    Read,
    Reset,
    Flash
};

/// The task of one run. As in the charger, a program word has two addresses.
struct Job
{
    Operation operation = Operation::Help;
    QString port;
    quint32 low = 0;    ///< for Erase and Read
    quint32 high = 0;   ///< the first address after the range
    QString file;       ///< the file to program or to create
    QString verifyFile; ///< for Flash

    /// Returns the name of the operation in the faults file.
    QString step() const;
};
