#pragma once

#include <QString>

/// A text file to be packed into a bundle.
class TextInput
{
public:
    /// Reads the file as UTF-8, drops a byte order mark and all carriage returns, and adds a
    /// missing line feed to the last line. If it returns false, `error()` describes why the file
    /// cannot be packed.
    bool read(const QString& path);

    /// Returns the text, every line followed by a line feed; empty for an empty file.
    QString text() const { return content; }

    QString error() const { return problem; }

private:
    QString content;
    QString problem;
};
