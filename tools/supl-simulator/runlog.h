#pragma once

class QString;
class QStringList;

/// The list of runs that tests look at: a line with the arguments when a run begins, another with the
/// exit code when it ends by itself. A log that cannot be written is no fault of the run.
namespace RunLog
{
/// Each argument in double quotes.
void begin(const QString& path, const QStringList& arguments);

void end(const QString& path, int exitCode);
} // namespace RunLog
