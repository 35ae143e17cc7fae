#pragma once

#include "schemareview/problem.h"

/// A bundle or a settings header with all its problems.
class CheckedFile
{
public:
    /// Reads and checks the file. What has sections or is called "*.kelvaron" is a bundle. A file that
    /// cannot be read is reported.
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
