#pragma once

#include <QString>

#include <optional>

class QStringList;

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

/// The command line of the uploader. Its order is fixed, as in the charger's own tool.
namespace CommandLine
{
/// Returns the job; nothing if the arguments (without the program's name) do not match exactly one
/// of the known lists. The addresses are not checked here.
std::optional<Job> parse(const QStringList& arguments);

/// Returns the known argument lists.
QString usage();

/// Returns the complete help.
QString help();
} // namespace CommandLine
