#include "settingsview.h"

#include "CBGenerator/profileconventions.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/xmlutility.h"

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
/// Returns a text that may contain line feeds and quotes, on one line.
QString shownText(const QString& value)
{
    QString line;
    for (const QChar c : value) {
        line += c.isPrint() ? c : QChar(QChar::ReplacementCharacter);
    }
    return line;
}
} // namespace

QList<const StructSetting*> SettingsView::settings(const StructSettings& structure)
{
    QList<const StructSetting*> shown;
    const QList<StructSetting*> visible = structure.getStructSettings();
    for (const StructSetting* setting : visible) {
        shown.append(setting);
    }
    for (const QString& name : HParser::ProfileConventions::flags()) {
        const StructSetting* flag = structure.getStructSettingByDescriptiveName(name);
        if (!structure.getGlobal() && flag != nullptr && !shown.contains(flag)) {
            shown.append(flag);
        }
    }
    return shown;
}

QString SettingsView::valueText(const QString& value, const QString& units)
{
    const QString text = shownText(value);
    return units.isEmpty() ? text : text + QLatin1Char(' ') + units;
}

QString SettingsView::valueText(const StructSetting& setting)
{
    if (setting.settingType == StructSetting::BOOL) {
        return setting.isOn() ? QStringLiteral("yes") : QStringLiteral("no");
    }
    return valueText(setting.getValue(), setting.units);
}

QList<SettingsView::Difference> SettingsView::differences(const StructSettings& left,
                                                          const StructSettings& right)
{
    const QList<const StructSetting*> lefts = settings(left);
    const QList<const StructSetting*> rights = settings(right);
    QList<Difference> found;
    for (int i = 0; i < lefts.size(); ++i) {
        const StructSetting& setting = *lefts.at(i);
        const QString other = rights.at(i)->getValue();
        if (setting.getValue() != other) {
            found.append(
                {setting.descriptiveName,
                 XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(setting.descriptiveName),
                 setting.getValue(), other, setting.units});
        }
    }
    return found;
}

QString SettingsView::describe(const Difference& difference)
{
    return QStringLiteral("%1: %2 -> %3")
        .arg(difference.name, valueText(difference.left, difference.units),
             valueText(difference.right, difference.units));
}

QJsonObject SettingsView::json(const Difference& difference)
{
    return {{QStringLiteral("name"), difference.name},
            {QStringLiteral("tag"), difference.tag},
            {QStringLiteral("left"), difference.left},
            {QStringLiteral("right"), difference.right},
            {QStringLiteral("units"), difference.units}};
}
