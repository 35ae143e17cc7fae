#pragma once

#include <cstdio>
#include <memory>

class QString;

/// C streams on files named by QString.
namespace StdioFile
{
struct Close
{
    void operator()(FILE* file) const { std::fclose(file); }
};
using Pointer = std::unique_ptr<FILE, Close>;

/// The file in text mode; none when it cannot be opened.
Pointer openForReading(const QString& path);

/// A text stream that appends to an open file descriptor through a descriptor of its own, so that
/// closing it leaves the other open; none when that fails.
Pointer openOnDescriptor(int descriptor);
} // namespace StdioFile
