#pragma once

#include <QList>

namespace HParser
{
class Generator;
class StructSettings;
struct SchemaFault;

/// Finds faults at load time that would otherwise end the program while someone is working.
///
/// Every struct is checked on a deep copy; a fault is a fatal assertion that names the setting and
/// the formula:
/// - a formula that cannot be built, or that names an unknown or hidden setting;
/// - formulas that depend on each other in a loop;
/// - a setting whose change triggers more than 10,000 changes of dependent settings;
/// - a chemistry without "active", "default" and "modifiable" flags, or with fewer than two visible
///   settings (its title and subtitle).
class SchemaCheck
{
public:
    SchemaCheck() = delete;

    /// Fail with the first fault of the schema, or of one struct.
    static void run(const Generator& generator);
    static void checkFormulas(const StructSettings& settings);
    static void checkProfileConventions(const StructSettings& settings);

    /// Returns the faults of a struct's formulas.
    static QList<SchemaFault> formulaFaults(const StructSettings& settings);

    /// Returns why a chemistry cannot be a profile.
    static QList<SchemaFault> conventionFaults(const StructSettings& settings);

    /// Returns true if a start with this schema header succeeds and its profiles can be written to
    /// images and read back.
    static bool isUsable(const QString& headerText);
};
} // namespace HParser
