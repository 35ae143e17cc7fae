#pragma once

class QString;

/// Writes one line to standard output in UTF-8, whatever the locale, and flushes it.
void printLine(const QString& line);
