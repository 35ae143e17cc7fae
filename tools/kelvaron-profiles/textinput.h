#pragma once

#include <QString>

/// A text file on its way into a bundle.
class TextInput
{
public:
    /// Reads the file: UTF-8, a byte order mark and all carriage returns dropped, a line feed added
    /// to a last line without one. On false, `error()` says why the file cannot go into a bundle.
    bool read(const QString& path);

    /// Every line followed by a line feed; empty for an empty file.
    QString text() const { return content; }

    QString error() const { return problem; }

private:
    QString content;
    QString problem;
};
