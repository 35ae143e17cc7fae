#pragma once

#include <QStringList>

#include <optional>

namespace HParser
{
class StructSetting;
}

/// What a number setting takes, in words for its user. Bounds that name other settings follow them,
/// so that a text is true only until the next change. Numbers are written as the editors show them.
namespace NumberHints
{
/// "0.1 to 20 A, 2 decimal places, default 5", and for bounds that name other settings "at least Cell
/// Voltage" and "at most Current Limit".
/// REQUIRES: a number setting whose formulas are built.
QStringList limits(const HParser::StructSetting& setting);

/// What was changed of a number when the setting stored it: "20 is the most allowed here", "Rounded to
/// 2 decimal places"; empty when it was taken as it is. Nothing typed is a text that was no number.
/// REQUIRES: a number setting whose formulas are built, and that has just stored `typed`.
QString correction(const HParser::StructSetting& setting, std::optional<double> typed);
} // namespace NumberHints
