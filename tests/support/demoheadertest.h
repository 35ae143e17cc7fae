#pragma once

#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "support/printing.h"
#include "testpaths.h"

#include <QMap>

#include <cmath>
#include <functional>
#include <memory>

using HParser::StructSetting;
using HParser::StructSettings;

inline constexpr int biggestNumber = 1000000;

class DemoHeaderTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        generator.setHFileLocation(KELVARON_DEMO_DIR "/kelvaron_chemistries.cb");
        generator.generate();
    }

    QList<StructSettings*> allStructs() const
    {
        return QList<StructSettings*>{generator.getGlobalSettings()}
               + generator.getChemistrySettings();
    }

    /// Calls `test` with every setting of every struct; a failure names the setting.
    void forEverySetting(const std::function<void(const StructSetting&)>& test) const
    {
        for (const StructSettings* settings : allStructs()) {
            for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
                SCOPED_TRACE(settings->getDescriptiveName() + ": " + setting->descriptiveName);
                test(*setting);
            }
        }
    }

    /// Calls `test` with a living copy of every struct.
    void forEveryLivingCopy(const std::function<void(StructSettings&)>& test) const
    {
        for (const StructSettings* settings : allStructs()) {
            SCOPED_TRACE(settings->getDescriptiveName());
            const std::unique_ptr<StructSettings> copy = settings->deepCopy();
            copy->buildFormulaTrees();
            test(*copy);
        }
    }

    HParser::Generator generator{nullptr};
};

/// Size on the charger, where a short has two bytes; 0 for a type that the demo does not use.
inline int byteWidth(const StructSetting& setting)
{
    static const QMap<QString, int> sizes{{"char", 1}, {"unsigned char", 1}, {"unsigned short", 2}};
    return setting.isArray ? setting.arraySize : sizes.value(setting.variableDataType);
}

inline int bitWidth(const StructSetting& setting)
{
    return setting.size == "auto" ? 8 * byteWidth(setting) : setting.size.toInt();
}

inline bool isText(const StructSetting& setting)
{
    return setting.settingType == StructSetting::STRING
           || setting.settingType == StructSetting::LIST;
}

inline QString defaultText(const StructSetting& setting)
{
    return std::get<QString>(setting.defaultValue);
}

/// The setting's value in the charger's memory.
inline double storedCount(const StructSetting& setting)
{
    return std::floor(setting.number() / setting.scaleFactor->toDouble() + 0.5);
}
