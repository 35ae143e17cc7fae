#pragma once

#include "exitcode.h"

#include <QList>
#include <QString>

#include <optional>

/// Small texts of lines "key = value". Blank lines and lines that begin with "#" do not count.
namespace KeyValueFile
{
struct Entry
{
    int line = 0; ///< counted from 1
    QString key;
    QString value;
};

/// The entries in the file's order; nothing when there is no such file or it cannot be opened.
/// Throws a Failure with the given code when it is no such text.
std::optional<QList<Entry>> read(const QString& path, ExitCode codeOfFailure);
} // namespace KeyValueFile
