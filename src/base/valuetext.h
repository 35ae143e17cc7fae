#pragma once

#include <QString>

// Values as profiles, images and messages have them.

/// Returns the number with 6 significant digits.
inline QString numberText(double number)
{
    return QString::number(number, 'g', 6);
}

/// Returns "true" or "false".
inline QString flagText(bool flag)
{
    return flag ? QStringLiteral("true") : QStringLiteral("false");
}
