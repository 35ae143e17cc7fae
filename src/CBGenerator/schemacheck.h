#pragma once

namespace HParser
{
class Generator;
class StructSettings;

/// Finds at load time what would otherwise stop the program in the middle of someone's work.
///
/// Every struct is checked on a deep copy; a fault is a fatal assertion that names the setting and
/// the formula:
/// - a formula that cannot be built, or that names an unknown or hidden setting;
/// - formulas that follow each other in a loop;
/// - a setting whose change sets off more than 10,000 changes of settings that follow it;
/// - a chemistry without "active", "default" and "modifiable" flags, or with fewer than two visible
///   settings (its title and subtitle).
class SchemaCheck
{
public:
    SchemaCheck() = delete;

    static void run(const Generator& generator);

    /// The formula checks for one struct.
    static void checkFormulas(const StructSettings& settings);

    /// The checks for a chemistry's flags, title and subtitle.
    static void checkProfileConventions(const StructSettings& settings);
};
} // namespace HParser
