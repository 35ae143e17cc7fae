#pragma once

#include "base/fatalcontext.h"

/// While this object exists, a fatal assertion blames this installed file and the line that was set
/// last.
class InstalledFileScope : public FatalContext
{
public:
    explicit InstalledFileScope(QString fileName);

    /// Sets the line being worked on: its number, counted from 1, and its text.
    void setLine(int number, const QString& text);

    /// Ends the blame of a single line; the file is still blamed.
    void clearLine();

protected:
    QString describe() const override;
    QString file() const override { return fileName; }

private:
    QString fileName;
    int lineNumber = 0;
    QString lineText;
};
