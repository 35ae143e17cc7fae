#pragma once

#include <QStringList>

/// While this object exists, the lines passed to printLine() are kept here instead of being written
/// to standard output. This is for programs that reserve standard output for their results.
/// Captures nest; the innermost one receives the lines. Used on the GUI thread only.
class LineCapture
{
public:
    LineCapture();
    ~LineCapture();
    LineCapture(const LineCapture&) = delete;
    LineCapture& operator=(const LineCapture&) = delete;

    /// Returns the captured lines. Only the first ones are kept: a damaged file may cause very
    /// many.
    QStringList lines() const { return kept; }

    /// Passes a line to the innermost active capture; returns false if there is none.
    static bool take(const QString& line);

private:
    LineCapture* outer = nullptr;
    QStringList kept;
};
