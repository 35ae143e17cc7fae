#pragma once

#include <QString>

/// A number with the word for what it counts, as shown in messages: "1 profile", "3 profiles".
QString countedText(int number, const QString& one, const QString& several);
