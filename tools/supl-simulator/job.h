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

/// What one run is asked to do. Addresses count program words the charger's way: two a word.
struct Job
{
    Operation operation = Operation::Help;
    QString port;
    quint32 low = 0;    ///< of Erase and Read
    quint32 high = 0;   ///< the first address behind the range
    QString file;       ///< to program, or to read into
    QString verifyFile; ///< of Flash

    /// The name of the operation in the faults file.
    QString step() const;
};
