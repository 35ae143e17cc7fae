#pragma once

#include <QString>

/// A text that comes from a user or a file as messages show it: on one line, in quotes, and cut
/// after 40 characters.
QString quotedText(const QString& text);
