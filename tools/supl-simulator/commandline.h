#pragma once

#include "job.h"

#include <optional>

class QStringList;

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
