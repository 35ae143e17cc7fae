#pragma once

#include <QList>

namespace HParser
{
class StructSetting;

/// Returns the visual order of `settings`, which are given in header order: for k = 0 to n - 1 each
/// setting whose visual index text converts to exactly k. Settings of equal index keep their header
/// order; a setting whose index is not a whole number from 0 to n - 1 is left out.
QList<StructSetting*> sortByVisualIndex(const QList<StructSetting*>& settings);
} // namespace HParser
