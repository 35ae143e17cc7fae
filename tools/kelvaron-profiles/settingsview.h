#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

namespace HParser
{
class StructSetting;
class StructSettings;
} // namespace HParser

/// The settings of one struct as the program shows and compares them.
namespace SettingsView
{
/// A setting whose value differs.
struct Difference
{
    QString name;
    QString tag;
    QString left;
    QString right;
    QString units;
};

/// Returns the visible settings in order, followed by the flags of a profile that are not visible.
QList<const HParser::StructSetting*> settings(const HParser::StructSettings& structure);

/// Returns the value with its units.
QString valueText(const QString& value, const QString& units);

/// Returns the setting's value with its units for display: "yes" or "no" for a flag.
QString valueText(const HParser::StructSetting& setting);

/// Returns the settings that differ. REQUIRES: two copies of the same struct.
QList<Difference> differences(const HParser::StructSettings& left,
                              const HParser::StructSettings& right);

/// Returns "NAME: LEFT -> RIGHT".
QString describe(const Difference& difference);

/// Returns an object with "name", "tag", "left", "right" and "units".
QJsonObject json(const Difference& difference);
} // namespace SettingsView
