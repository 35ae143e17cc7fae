#pragma once

#include "failure.h"

#include <QList>
#include <QString>

#include <optional>

/// Reads small files of lines "key = value". Blank lines and lines that begin with "#" are ignored.
namespace KeyValueFile
{
struct Entry
{
    int line = 0; ///< counted from 1
    QString key;
    QString value;
};

/// Returns the entries in the file's order; nothing if the file does not exist or cannot be opened.
/// Throws a Failure with the given code if a line is malformed.
std::optional<QList<Entry>> read(const QString& path, ExitCode codeOfFailure);
} // namespace KeyValueFile
