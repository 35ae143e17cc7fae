#pragma once

/// How long the pauses are: a share of the normal ones, or all of them the same.
struct Pace
{
    bool isFixed = false;
    int number = 100; ///< percent, or milliseconds when fixed

    /// The pause in milliseconds in place of a normal one.
    int pause(int normal) const { return isFixed ? number : normal * number / 100; }
};
