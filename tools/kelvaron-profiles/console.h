#pragma once

#include "exitcode.h"

#include <QStringList>

class QJsonDocument;

/// Writes a line to standard output, in UTF-8.
void writeOutput(const QString& line);

/// Writes a document to standard output, indented.
void writeJson(const QJsonDocument& document);

/// Writes a line to standard error, in UTF-8.
void printErrorLine(const QString& line);

/// Writes "kelvaron-profiles: MESSAGE" to standard error, in UTF-8.
void printError(const QString& message);

/// The same for a file: "kelvaron-profiles: PATH: MESSAGE".
void printError(const QString& path, const QString& message);

/// Writes "PATH: MESSAGE" for each message to standard error.
void printMessages(const QString& path, const QStringList& messages);

/// Flushes standard output. If it could not be written completely, reports this and returns the
/// exit code for it; otherwise returns `code`.
ExitCode finishOutput(ExitCode code);
