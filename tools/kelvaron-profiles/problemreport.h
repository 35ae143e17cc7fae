#pragma once

#include "schemareview/problem.h"

#include <QJsonArray>
#include <QStringList>

/// Problems of files as text and as JSON.
namespace ProblemReport
{
/// Returns "FILE:LINE:COLUMN: error: TEXT", followed by "FILE:LINE:COLUMN: note: write ADVICE"; an
/// unknown line or column is left out.
QStringList lines(const QString& file, const Problem& problem);

/// Returns an object for each problem: "line", "column", "severity" ("error" or "warning"),
/// "fatal", "text" and "write" (what to write instead).
QJsonArray json(const Problems& problems);

int errors(const Problems& problems);
int warnings(const Problems& problems);

/// Writes the problems to standard error.
void printProblems(const QString& file, const Problems& problems);

/// Returns, for example, "2 errors, 1 warning".
QString summary(const Problems& problems);
} // namespace ProblemReport
