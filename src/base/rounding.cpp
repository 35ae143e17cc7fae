#include "base/rounding.h"

#include <cmath>
#include <limits>

int roundHalfUp(double value)
{
    if (std::isnan(value)) {
        return 0;
    }
    const double rounded = std::floor(value + 0.5);
    if (rounded <= static_cast<double>(std::numeric_limits<int>::min())) {
        return std::numeric_limits<int>::min();
    }
    if (rounded >= static_cast<double>(std::numeric_limits<int>::max())) {
        return std::numeric_limits<int>::max();
    }
    return static_cast<int>(rounded);
}
