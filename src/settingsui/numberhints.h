#pragma once

#include <QStringList>

#include <optional>

namespace HParser
{
class StructSetting;
}

/// Describes for the user which numbers a setting accepts. Bounds may depend on other settings, so
/// a text is valid only until the next change. Numbers are formatted as in the editors.
namespace NumberHints
{
/// Returns, for example, "0.1 to 20 A, 2 decimal places, default 5"; for bounds that depend on
/// other settings "at least Cell Voltage" and "at most Current Limit". REQUIRES: a number setting
/// whose formulas are built.
QStringList limits(const HParser::StructSetting& setting);

/// Returns how the setting changed a number when storing it: "20 is the most allowed here",
/// "Rounded to 2 decimal places"; empty if it was stored unchanged. `typed` is empty if the text
/// was not a number. REQUIRES: a number setting whose formulas are built, and that has just stored
/// `typed`.
QString correction(const HParser::StructSetting& setting, std::optional<double> typed);
} // namespace NumberHints
