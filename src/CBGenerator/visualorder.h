#pragma once

#include <QList>

namespace HParser
{
class StructSetting;

/// The visual order of `settings`, given in header order: for k = 0 to n - 1 each setting whose
/// visual index text converts to exactly k. Settings of equal index keep header order; a setting
/// whose index is not a whole number from 0 to n - 1 is left out.
QList<StructSetting*> sortByVisualIndex(const QList<StructSetting*>& settings);
} // namespace HParser
