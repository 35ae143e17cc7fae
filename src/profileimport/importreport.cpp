#include "profileimport/importreport.h"

#include "CBGenerator/formula.h"
#include "CBGenerator/profileconventions.h"
#include "CBGenerator/storabletext.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/countedtext.h"
#include "base/quotedtext.h"
#include "base/valuetext.h"
#include "base/xmlutility.h"

#include <QSet>

#include <algorithm>
#include <cmath>

using HParser::StructSetting;
using HParser::StructSettings;
using XMLGeneratorParser::XMLUtility;

namespace
{
constexpr int mostChanges = 15; // the message box must fit the screen
constexpr int mostProfiles = 3;

/// Returns the value that replaces a missing or unusable one.
QString nothing(const StructSetting& setting)
{
    switch (setting.settingType) {
    case StructSetting::NUM:
        return QStringLiteral("0");
    case StructSetting::BOOL:
        return QStringLiteral("off");
    default:
        return QStringLiteral("empty");
    }
}

QString complaintAboutNumber(const StructSetting& setting, const QString& value)
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) {
        return QStringLiteral("%1 is not a number; 0 is used").arg(quotedText(value));
    }
    const double lower = setting.lowerBound->toDouble();
    const double upper = setting.upperBound->toDouble();
    const auto isAway = [number](double allowed) {
        // Files hold six digits; a bound may be the result of a formula with more.
        return std::abs(allowed - number) > 1e-5 * std::max(1.0, std::abs(number));
    };
    const bool isOutside = isAway(std::min(upper, std::max(lower, number)));
    // A value at a bound with more decimals than the setting has is rounded beyond it.
    if (!isOutside || !isAway(setting.setInBoundsAndDecPlaces(number))) {
        return {};
    }
    return QStringLiteral("%1 is not between %2 and %3")
        .arg(numberText(number), numberText(lower), numberText(upper));
}

QString complaintAboutText(const StructSetting& setting, const QString& value)
{
    const QString characters = StorableText::unstorable(value);
    if (!characters.isEmpty()) {
        return QStringLiteral("the charger cannot hold %1").arg(quotedText(characters));
    }
    if (setting.settingType == StructSetting::LIST && !setting.list.contains(value)) {
        return QStringLiteral("%1 is not one of the choices").arg(quotedText(value));
    }
    if (setting.arraySize > 0 && value.size() > setting.arraySize - 1) {
        return QStringLiteral("%1 is longer than %2")
            .arg(quotedText(value), countedText(setting.arraySize - 1, QStringLiteral("character"),
                                                QStringLiteral("characters")));
    }
    return {};
}

/// Returns what is wrong with a value; empty if it is valid.
QString complaintAbout(const StructSetting& setting, const QString& value)
{
    switch (setting.settingType) {
    case StructSetting::NUM:
        return complaintAboutNumber(setting, value);
    case StructSetting::BOOL:
        return value == QLatin1String("true") || value == QLatin1String("false")
                   ? QString()
                   : QStringLiteral("%1 is neither true nor false; off is used")
                         .arg(quotedText(value));
    case StructSetting::STRING:
    case StructSetting::LIST:
        return complaintAboutText(setting, value);
    case StructSetting::UNKNOWN:
        break;
    }
    return {};
}
} // namespace

void ImportReport::examine(const QString& profileName, const QMap<QString, QString>& properties,
                           const StructSettings& settings)
{
    const QList<StructSetting*> visible = settings.getStructSettings();
    for (const StructSetting* setting : visible) {
        const QString name = setting->descriptiveName;
        const auto value = properties.constFind(XMLUtility::xmlTagFromDescriptiveName(name));
        if (value == properties.cend()) {
            add(QStringLiteral("%1 is missing and is now %2").arg(name, nothing(*setting)),
                profileName);
            continue;
        }
        const QString complaint = complaintAbout(*setting, *value);
        if (!complaint.isEmpty()) {
            add(QStringLiteral("%1: %2").arg(name, complaint), profileName);
        }
    }
    examineUnknown(profileName, properties, settings);
}

void ImportReport::examineUnknown(const QString& profileName,
                                  const QMap<QString, QString>& properties,
                                  const StructSettings& settings)
{
    QSet<QString> known = {HParser::ProfileConventions::chemistry};
    const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
    for (const StructSetting* setting : members) {
        known.insert(XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName));
    }
    for (auto property = properties.cbegin(); property != properties.cend(); ++property) {
        if (!known.contains(property.key())) {
            add(QStringLiteral("%1 is unknown and was left out").arg(quotedText(property.key())),
                profileName);
        }
    }
}

void ImportReport::add(const QString& what, const QString& profileName)
{
    const int index = indexOfChange.value(what, changes.size());
    if (index == changes.size()) {
        indexOfChange.insert(what, index);
        changes.append({what, {}, 0});
    }
    Change& change = changes[index];
    ++change.numProfiles;
    if (change.firstProfiles.size() < mostProfiles) {
        change.firstProfiles.append(profileName);
    }
}

void ImportReport::clear()
{
    changes.clear();
    indexOfChange.clear();
}

QStringList ImportReport::lines() const
{
    QStringList all;
    for (const Change& change : changes) {
        all.append(change.what);
    }
    return all;
}

QString ImportReport::text() const
{
    QStringList lines;
    for (const Change& change : changes.mid(0, mostChanges)) {
        QString profiles = change.firstProfiles.join(QStringLiteral(", "));
        if (change.numProfiles > mostProfiles) {
            profiles += QStringLiteral(" and %1 more").arg(change.numProfiles - mostProfiles);
        }
        lines.append(QStringLiteral("%1 (%2)").arg(change.what, profiles));
    }
    if (changes.size() > mostChanges) {
        lines.append(QStringLiteral("and %1 more").arg(changes.size() - mostChanges));
    }
    return lines.join(QLatin1Char('\n'));
}
