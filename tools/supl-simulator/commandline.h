#pragma once

#include "job.h"

#include <optional>

class QStringList;

/// The command line of the uploader. Its order is fixed, as the charger's own tool wants it.
namespace CommandLine
{
/// The job; nothing when the arguments (without the program's name) are not exactly one of the
/// known lists. Whether addresses make sense is not looked at here.
std::optional<Job> parse(const QStringList& arguments);

/// The known argument lists.
QString usage();

/// Everything there is to know about the program.
QString help();
} // namespace CommandLine
