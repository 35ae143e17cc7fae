#pragma once

#include "schemareview/problem.h"

#include <QJsonArray>
#include <QStringList>

/// Problems of files as text and as JSON.
namespace ProblemReport
{
/// "FILE:LINE:COLUMN: error: TEXT", behind it "FILE:LINE:COLUMN: note: write ADVICE"; a place that is
/// not known is left out.
QStringList lines(const QString& file, const Problem& problem);

/// An object for each: "line", "column", "severity" ("error" or "warning"), "fatal", "text" and
/// "write" (what to write instead).
QJsonArray json(const Problems& problems);

int errors(const Problems& problems);
int warnings(const Problems& problems);

/// Writes them to standard error.
void printProblems(const QString& file, const Problems& problems);

/// "2 errors, 1 warning"
QString summary(const Problems& problems);
} // namespace ProblemReport
