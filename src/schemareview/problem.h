#pragma once

#include <QList>
#include <QString>

/// A problem at a place of a text file, and what to write instead.
struct Problem
{
    enum class Severity
    {
        Warning, ///< works, but probably not as intended
        Error,   ///< values or settings are lost
        Fatal    ///< the editor cannot use the file at all
    };

    int line = 0;   ///< counted from 1; 0 for the file as a whole
    int column = 0; ///< in characters, counted from 1; 0 for the line as a whole
    Severity severity = Severity::Error;
    QString text;
    QString advice; ///< may be empty
};

using Problems = QList<Problem>;
