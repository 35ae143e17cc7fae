#pragma once

#include <QList>

namespace HParser
{
class Generator;
class StructSettings;
struct SchemaFault;

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

    /// The first fault is a fatal assertion.
    static void run(const Generator& generator);
    static void checkFormulas(const StructSettings& settings);
    static void checkProfileConventions(const StructSettings& settings);

    /// What is wrong with the formulas of a struct.
    static QList<SchemaFault> formulaFaults(const StructSettings& settings);

    /// What a chemistry lacks to be a profile.
    static QList<SchemaFault> conventionFaults(const StructSettings& settings);

    /// Whether a start with this schema header succeeds, and its profiles can be written to images and
    /// read back.
    static bool isUsable(const QString& headerText);
};
} // namespace HParser
