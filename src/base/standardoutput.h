#pragma once

class QString;

/// Writes one line to standard output in UTF-8, whatever the locale, and flushes it;
/// into a LineCapture instead while there is one.
void printLine(const QString& line);
