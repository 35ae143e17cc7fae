#pragma once

/// Rounds to the nearest integer, halves upward (-2.5 gives -2, -2.6 gives -3).
/// Saturates at the bounds of a 32-bit integer; not-a-number gives 0.
int roundHalfUp(double value);
