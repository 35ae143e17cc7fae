#pragma once

/// Rounds to the nearest integer, halves upward (-2.5 becomes -2, -2.6 becomes -3). Saturates at
/// the bounds of a 32-bit integer; not-a-number becomes 0.
int roundHalfUp(double value);
