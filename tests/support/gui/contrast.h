#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

// As accessibility guidelines define them.

/// Returns the luminance of a colour, from 0 to 1.
inline double luminance(const QColor& color)
{
    const auto linear = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
           + 0.0722 * linear(color.blueF());
}

/// Returns the contrast of two colours, from 1, the same, to 21. Text needs 4.5, anything else 3.
inline double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}
