#pragma once

#include <QString>

class Comparison;

/// A page that shows two files of profiles side by side.
namespace ComparisonPage
{
/// Each profile beside its partner, all settings of those that differ; what differs is marked, also
/// without colours.
QString page(const Comparison& comparison);
} // namespace ComparisonPage
