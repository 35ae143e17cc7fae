#pragma once

class QString;

/// Writes "kelvaron-bundle: MESSAGE" to standard error, in UTF-8.
void printError(const QString& message);

/// The same for something about a file: "kelvaron-bundle: PATH: MESSAGE".
void printError(const QString& path, const QString& message);
