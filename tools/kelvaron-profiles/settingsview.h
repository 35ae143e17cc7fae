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

/// The visible settings in their order, behind them the flags of a profile that are not visible.
QList<const HParser::StructSetting*> settings(const HParser::StructSettings& structure);

/// The value with its units.
QString valueText(const QString& value, const QString& units);

/// The setting's value with its units, for people: "yes" and "no" for a flag.
QString valueText(const HParser::StructSetting& setting);

/// What differs. REQUIRES: two copies of the same struct.
QList<Difference> differences(const HParser::StructSettings& left,
                              const HParser::StructSettings& right);

/// "NAME: LEFT -> RIGHT"
QString describe(const Difference& difference);

/// "name", "tag", "left", "right" and "units"
QJsonObject json(const Difference& difference);
} // namespace SettingsView
