#pragma once

#include <QString>

class Comparison;

/// A page that shows two files of profiles side by side.
namespace ComparisonPage
{
/// Returns a page with each profile beside its partner, and all settings of those that differ.
/// Differences are marked not only by colour.
QString page(const Comparison& comparison);
} // namespace ComparisonPage
