#include "CBGenerator/structsettings.h"

#include "CBGenerator/structsetting.h"
#include "CBGenerator/visualorder.h"
#include "base/standardoutput.h"
#include "base/valuetext.h"

#include <algorithm>

namespace HParser
{
StructSettings::StructSettings(QObject* parent) : QObject(parent) {}

void StructSettings::setOriginalOrderStructSettings(const QList<StructSetting*>& settings)
{
    originalOrderStructSettings = settings;
    for (StructSetting* setting : settings) {
        setting->setParent(this);
    }
}

std::unique_ptr<StructSettings> StructSettings::deepCopy() const
{
    QList<StructSetting*> copies;
    for (const StructSetting* setting : originalOrderStructSettings) {
        copies.append(setting->deepCopy());
    }
    auto copy = std::make_unique<StructSettings>(nullptr);
    copy->setOriginalOrderStructSettings(copies);
    copy->setStructSettings(sortByVisualIndex(copies));
    copy->setDescriptiveName(descriptiveName);
    copy->setGlobal(global);
    return copy;
}

void StructSettings::buildFormulaTrees()
{
    for (StructSetting* setting : qAsConst(originalOrderStructSettings)) {
        setting->buildFormulaTrees(structSettings);
    }
    for (StructSetting* setting : qAsConst(originalOrderStructSettings)) {
        setting->copyDefaultValueIntoCurrentValue();
    }
    for (StructSetting* setting : qAsConst(originalOrderStructSettings)) {
        setting->attachMemberSettingSignalsToContainerFormulaSlots();
    }
    for (StructSetting* setting : qAsConst(originalOrderStructSettings)) {
        setting->attachMemberFormulaSignalsToThisSettingsSlot();
    }
}

StructSetting* StructSettings::getStructSettingByDescriptiveName(const QString& name) const
{
    const auto found = std::find_if(
        originalOrderStructSettings.cbegin(), originalOrderStructSettings.cend(),
        [&name](const StructSetting* setting) { return setting->descriptiveName == name; });
    return found == originalOrderStructSettings.cend() ? nullptr : *found;
}

void StructSettings::print() const
{
    printLine(QStringLiteral("Chemistry : ") + descriptiveName);
    printLine(QStringLiteral("isGlobal : ") + flagText(global));
    printLine(QStringLiteral("Settings--- "));
    for (const StructSetting* setting : originalOrderStructSettings) {
        setting->printSetting();
    }
}
} // namespace HParser
