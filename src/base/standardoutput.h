#pragma once

class QString;

/// Writes one line to standard output in UTF-8, whatever the locale, and flushes it. While a
/// LineCapture exists, the line goes to the capture instead.
void printLine(const QString& line);
