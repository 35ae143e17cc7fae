#pragma once

#include <QString>

/// A number and what it counts, as messages show them: "1 profile", "3 profiles".
QString countedText(int number, const QString& one, const QString& several);
