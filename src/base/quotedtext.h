#pragma once

#include <QString>

/// Returns a text from a user or a file as shown in messages: on one line, in quotes, and cut off
/// after 40 characters.
QString quotedText(const QString& text);
