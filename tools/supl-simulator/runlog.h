#pragma once

class QString;
class QStringList;

/// A log of runs for tests: a line with the arguments when a run begins, another with the exit code
/// when it ends by itself. A log that cannot be written does not make the run fail.
namespace RunLog
{
/// Writes each argument in double quotes.
void begin(const QString& path, const QStringList& arguments);

void end(const QString& path, int exitCode);
} // namespace RunLog
