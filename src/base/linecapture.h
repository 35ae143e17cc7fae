#pragma once

#include <QStringList>

/// While it lives, what printLine() is given is kept here and not written to standard output: for a
/// program whose standard output belongs to its results. Captures nest; the innermost one takes the
/// lines. Used on the GUI thread only.
class LineCapture
{
public:
    LineCapture();
    ~LineCapture();
    LineCapture(const LineCapture&) = delete;
    LineCapture& operator=(const LineCapture&) = delete;

    /// The first lines; a damaged file may cause very many.
    QStringList lines() const { return kept; }

    /// Gives a line to the innermost living capture; false when there is none.
    static bool take(const QString& line);

private:
    LineCapture* outer = nullptr;
    QStringList kept;
};
