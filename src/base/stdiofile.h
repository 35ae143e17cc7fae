#pragma once

#include <QByteArray>

#include <cstdio>
#include <functional>
#include <memory>

class QString;

/// C streams in Qt's terms.
namespace StdioFile
{
struct Close
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using Pointer = std::unique_ptr<FILE, Close>;

/// The file in text mode; none when it cannot be opened.
Pointer openForReading(const QString& path);

/// What `write` writes into a stream; null when it returns false or the stream fails.
QByteArray written(const std::function<bool(FILE*)>& write);
} // namespace StdioFile
