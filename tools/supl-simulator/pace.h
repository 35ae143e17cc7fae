#pragma once

/// The length of the pauses: a percentage of the normal length, or a fixed length.
struct Pace
{
    bool isFixed = false;
    int number = 100; ///< percent, or milliseconds when fixed

    /// Returns the pause in milliseconds that replaces a normal one.
    int pause(int normal) const { return isFixed ? number : normal * number / 100; }
};
