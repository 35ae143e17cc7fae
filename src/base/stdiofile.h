#pragma once

#include <QByteArray>

#include <cstdio>
#include <functional>
#include <memory>

class QString;

/// C streams with Qt types.
namespace StdioFile
{
struct Close
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using Pointer = std::unique_ptr<FILE, Close>;

/// Opens the file in text mode; returns null if it cannot be opened.
Pointer openForReading(const QString& path);

/// Returns what `write` writes to a stream; a null array if it returns false or the stream fails.
QByteArray written(const std::function<bool(FILE*)>& write);
} // namespace StdioFile
