#pragma once

#include "exitcode.h"

#include <QStringList>

class QJsonDocument;

/// Writes a line to standard output, in UTF-8.
void writeOutput(const QString& line);

/// The same with a document, indented.
void writeJson(const QJsonDocument& document);

/// Writes a line to standard error, in UTF-8.
void printErrorLine(const QString& line);

/// Writes "kelvaron-profiles: MESSAGE" to standard error, in UTF-8.
void printError(const QString& message);

/// The same for something about a file: "kelvaron-profiles: PATH: MESSAGE".
void printError(const QString& path, const QString& message);

/// Writes "PATH: MESSAGE" for each message to standard error.
void printMessages(const QString& path, const QStringList& messages);

/// Sends what is left to standard output. When it could not be written whole, reports that and
/// returns the code for it, else `code`.
ExitCode finishOutput(ExitCode code);
