#pragma once

#include "schemareview/problem.h"

/// A bundle or a settings header with all its problems.
class CheckedFile
{
public:
    /// Reads and checks the file. A file with sections or with the suffix ".kelvaron" is a bundle.
    /// Reports a file that cannot be read.
    explicit CheckedFile(const QString& filePath);

    QString path() const { return filePath; }
    bool isRead() const { return wasRead; }
    bool isBundle() const { return hasSections; }
    Problems problems() const { return all; }

private:
    void checkEncoding(const QString& text);

    QString filePath;
    bool wasRead = false;
    bool hasSections = false;
    Problems all;
};
