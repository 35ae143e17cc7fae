#include "CBGenerator/formula.h"
#include "CBGenerator/generator.h"
#include "CBGenerator/schemacheck.h"
#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "base/xmlutility.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QMap>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

using HParser::StructSetting;
using HParser::StructSettings;

namespace
{
constexpr int biggestNumber = 1000000;

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

    /// Calls `test` with every setting of every struct and says which one in a failure.
    void forEverySetting(const std::function<void(const StructSetting&)>& test) const
    {
        for (const StructSettings* settings : allStructs()) {
            for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
                SCOPED_TRACE(
                    qPrintable(settings->getDescriptiveName() + ": " + setting->descriptiveName));
                test(*setting);
            }
        }
    }

    /// Calls `test` with a living copy of every struct.
    void forEveryLivingCopy(const std::function<void(StructSettings&)>& test) const
    {
        for (const StructSettings* settings : allStructs()) {
            SCOPED_TRACE(qPrintable(settings->getDescriptiveName()));
            const std::unique_ptr<StructSettings> copy = settings->deepCopy();
            copy->buildFormulaTrees();
            test(*copy);
        }
    }

    HParser::Generator generator{nullptr};
};

/// Size on the charger, where a short has two bytes; 0 for a type that the demo does not use.
int byteWidth(const StructSetting& setting)
{
    static const QMap<QString, int> sizes{{"char", 1}, {"unsigned char", 1}, {"unsigned short", 2}};
    return setting.isArray ? setting.arraySize : sizes.value(setting.variableDataType);
}

int bitWidth(const StructSetting& setting)
{
    return setting.size == "auto" ? 8 * byteWidth(setting) : setting.size.toInt();
}

bool isText(const StructSetting& setting)
{
    return setting.settingType == StructSetting::STRING
           || setting.settingType == StructSetting::LIST;
}

QString defaultText(const StructSetting& setting)
{
    return std::get<QString>(setting.defaultValue);
}

/// What the setting's value becomes in the charger's memory.
double storedCount(const StructSetting& setting)
{
    return std::floor(setting.number() / setting.scaleFactor->toDouble() + 0.5);
}
} // namespace

TEST_F(DemoHeaderTest, StartsWhereTheChargerKeepsProfiles)
{
    EXPECT_EQ(generator.getProfileStartWordAddress(), 0x9C00);
}

TEST_F(DemoHeaderTest, PassesTheChecksOfTheEditor)
{
    HParser::SchemaCheck::run(generator); // a fault ends the process
    SUCCEED();
}

TEST_F(DemoHeaderTest, HoldsSeveralChemistriesOfManySettings)
{
    EXPECT_EQ(generator.getGlobalSettings()->getDescriptiveName(), "Global Settings");
    EXPECT_GE(generator.getChemistrySettings().size(), 3);
    QSet<QString> names;
    for (const StructSettings* chemistry : generator.getChemistrySettings()) {
        EXPECT_GE(chemistry->getOriginalOrderStructSettings().size(), 25)
            << qPrintable(chemistry->getDescriptiveName());
        names.insert(chemistry->getDescriptiveName());
    }
    EXPECT_EQ(names.size(), generator.getChemistrySettings().size());
}

TEST_F(DemoHeaderTest, EveryStructBeginsWithATypeOfItsOwn)
{
    QSet<int> types;
    forEveryLivingCopy([&types](StructSettings& settings) {
        StructSetting* type = settings.getOriginalOrderStructSettings().first();
        EXPECT_EQ(type->descriptiveName, "type");
        EXPECT_EQ(type->settingType, StructSetting::NUM);
        EXPECT_EQ(type->variableDataType, "unsigned char");
        EXPECT_FALSE(type->isArray);
        EXPECT_EQ(bitWidth(*type), 8);
        EXPECT_FALSE(settings.getStructSettings().contains(type));
        const int value = static_cast<int>(type->number());
        EXPECT_GT(value, 0);
        EXPECT_LT(value, 255);
        EXPECT_FALSE(types.contains(value)) << value;
        types.insert(value);
        type->enableAdvancedMode(true);
        type->setValue(200.0);
        EXPECT_EQ(type->number(), value);
    });
}

TEST_F(DemoHeaderTest, EveryStructHasAHiddenChecksumOnAByteBoundary)
{
    forEveryLivingCopy([](StructSettings& settings) {
        const StructSetting* checksum = settings.getStructSettingByDescriptiveName("checksum");
        ASSERT_NE(checksum, nullptr);
        EXPECT_EQ(checksum->variableDataType, "unsigned char");
        EXPECT_EQ(checksum->size, "auto");
        EXPECT_EQ(checksum->scaleFactor->toDouble(), 1);
        EXPECT_EQ(settings.getOriginalOrderStructSettings().last(), checksum);
        for (const StructSetting* shown : settings.getStructSettings()) {
            EXPECT_NE(shown, checksum);
        }
    });
}

TEST_F(DemoHeaderTest, EveryChemistryHasHiddenFlags)
{
    for (const StructSettings* chemistry : generator.getChemistrySettings()) {
        for (const char* name : {"active", "default", "modifiable"}) {
            StructSetting* flag = chemistry->getStructSettingByDescriptiveName(name);
            ASSERT_NE(flag, nullptr) << name;
            EXPECT_EQ(flag->settingType, StructSetting::BOOL);
            EXPECT_FALSE(chemistry->getStructSettings().contains(flag));
        }
    }
}

TEST_F(DemoHeaderTest, EveryChemistryShowsTitleAndSubtitleFirst)
{
    for (const StructSettings* chemistry : generator.getChemistrySettings()) {
        const QList<StructSetting*> shown = chemistry->getStructSettings();
        ASSERT_GE(shown.size(), 2);
        EXPECT_EQ(shown.at(0)->descriptiveName, "Title");
        EXPECT_EQ(shown.at(1)->descriptiveName, "Subtitle");
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(shown.at(i)->settingType, StructSetting::STRING);
            EXPECT_FALSE(defaultText(*shown.at(i)).isEmpty());
        }
    }
}

TEST_F(DemoHeaderTest, SettingsAreShownInAGaplessOrderBasicOnesFirst)
{
    for (const StructSettings* settings : allStructs()) {
        const QList<StructSetting*> shown = settings->getStructSettings();
        bool advancedBegan = false;
        for (int i = 0; i < shown.size(); ++i) {
            SCOPED_TRACE(
                qPrintable(settings->getDescriptiveName() + ": " + shown.at(i)->descriptiveName));
            EXPECT_EQ(shown.at(i)->visualIndex->toString(), QString::number(i));
            EXPECT_FALSE(shown.at(i)->isBasic && advancedBegan);
            advancedBegan = advancedBegan || !shown.at(i)->isBasic;
        }
        const int hidden = settings->getGlobal() ? 2 : 5;
        EXPECT_EQ(shown.size() + hidden, settings->getOriginalOrderStructSettings().size());
    }
}

TEST_F(DemoHeaderTest, BitFieldsFillWholeBytesBeforeAByteSizedMember)
{
    static const QRegularExpression digits("^[1-9][0-9]*$");
    for (const StructSettings* settings : allStructs()) {
        int bits = 0;
        bool hasBitFields = false;
        for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
            SCOPED_TRACE(
                qPrintable(settings->getDescriptiveName() + ": " + setting->descriptiveName));
            EXPECT_GT(byteWidth(*setting), 0);
            if (setting->size == "auto") {
                EXPECT_EQ(bits % 8, 0);
                continue;
            }
            hasBitFields = true;
            ASSERT_TRUE(setting->size.contains(digits));
            EXPECT_FALSE(isText(*setting));
            EXPECT_FALSE(setting->isArray);
            EXPECT_LE(bitWidth(*setting), 8 * byteWidth(*setting));
            bits += bitWidth(*setting);
        }
        EXPECT_EQ(bits % 8, 0);
        EXPECT_TRUE(hasBitFields);
    }
}

TEST_F(DemoHeaderTest, EightProfilesFitIntoTheImage)
{
    int largest = 0;
    for (const StructSettings* settings : allStructs()) {
        int bits = 0;
        for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
            bits += setting->size == "auto" ? 8 * byteWidth(*setting) : bitWidth(*setting);
        }
        const int words = (bits / 8 + 2) / 3; // three bytes of data and one of padding each
        largest = std::max(largest, 4 * words);
    }
    EXPECT_LE(largest, 224);
    EXPECT_GE(2048 / largest - 1, 8);
}

TEST_F(DemoHeaderTest, EveryChemistryUsesEveryKindAndBothLevels)
{
    for (const StructSettings* chemistry : generator.getChemistrySettings()) {
        SCOPED_TRACE(qPrintable(chemistry->getDescriptiveName()));
        QMap<int, int> kinds;
        int basic = 0;
        int advanced = 0;
        for (const StructSetting* setting : chemistry->getStructSettings()) {
            ++kinds[setting->settingType];
            ++(setting->isBasic ? basic : advanced);
        }
        EXPECT_GT(kinds[StructSetting::NUM], 0);
        EXPECT_GT(kinds[StructSetting::BOOL], 0);
        EXPECT_GT(kinds[StructSetting::STRING], 0);
        EXPECT_GT(kinds[StructSetting::LIST], 0);
        EXPECT_GT(basic, 2);
        EXPECT_GT(advanced, 2);
    }
}

TEST_F(DemoHeaderTest, NoSettingIsOfUnknownKindOrWithoutACategory)
{
    forEverySetting([](const StructSetting& setting) {
        EXPECT_NE(setting.settingType, StructSetting::UNKNOWN);
        EXPECT_FALSE(setting.categoryLabel.isEmpty());
        EXPECT_FALSE(setting.variableName.isEmpty());
    });
}

TEST_F(DemoHeaderTest, UsesUnitsAndSeveralScaleFactors)
{
    QSet<QString> units;
    QSet<QString> scaleFactors;
    forEverySetting([&](const StructSetting& setting) {
        if (setting.settingType == StructSetting::NUM) {
            units.insert(setting.units);
            scaleFactors.insert(setting.scaleFactor->toString());
        }
    });
    for (const char* unit : {"A", "V", "%", "min"}) {
        EXPECT_TRUE(units.contains(unit)) << unit;
    }
    for (const char* factor : {"1", "0.1", "0.01", "0.001"}) {
        EXPECT_TRUE(scaleFactors.contains(factor)) << factor;
    }
}

TEST_F(DemoHeaderTest, FormulasNameOnlyShownNumbersAndDefaultsOnlyEarlierOnes)
{
    int bounds = 0;
    int defaults = 0;
    forEveryLivingCopy([&](StructSettings& settings) {
        const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            SCOPED_TRACE(qPrintable(setting->descriptiveName));
            const HParser::Formula* defaultFormula =
                setting->settingType == StructSetting::NUM
                    ? std::get<HParser::Formula*>(setting->defaultValue)
                    : nullptr;
            for (const HParser::Formula* formula : setting->evaluatedFormulas()) {
                formula->visitSettings([&](StructSetting* named) {
                    ASSERT_NE(named, nullptr);
                    EXPECT_TRUE(settings.getStructSettings().contains(named));
                    EXPECT_EQ(named->settingType, StructSetting::NUM);
                    EXPECT_NE(formula, setting->scaleFactor);
                    EXPECT_NE(formula, setting->decimalPlaces);
                    if (formula == defaultFormula) {
                        EXPECT_LT(members.indexOf(named), members.indexOf(setting));
                        ++defaults;
                    } else {
                        ++bounds;
                    }
                });
            }
        }
    });
    EXPECT_GT(bounds, 0);
    EXPECT_GT(defaults, 0);
}

TEST_F(DemoHeaderTest, EveryDefaultLiesInItsBoundsAndKeepsItsDecimalPlaces)
{
    forEveryLivingCopy([](StructSettings& settings) {
        for (const StructSetting* setting : settings.getOriginalOrderStructSettings()) {
            SCOPED_TRACE(qPrintable(setting->descriptiveName));
            if (setting->settingType != StructSetting::NUM) {
                continue;
            }
            const double value = setting->number();
            EXPECT_LE(setting->lowerBound->toDouble(), setting->upperBound->toDouble());
            EXPECT_GE(value, setting->lowerBound->toDouble());
            EXPECT_LE(value, setting->upperBound->toDouble());
            EXPECT_NEAR(setting->setInBoundsAndDecPlaces(value), value, 1e-9);
        }
    });
}

TEST_F(DemoHeaderTest, ScaleFactorsMatchDecimalPlaces)
{
    forEveryLivingCopy([](StructSettings& settings) {
        for (const StructSetting* setting : settings.getOriginalOrderStructSettings()) {
            if (setting->settingType == StructSetting::NUM) {
                EXPECT_NEAR(setting->scaleFactor->toDouble(),
                            std::pow(10, -setting->decimalPlaces->toDouble()), 1e-12)
                    << qPrintable(setting->descriptiveName);
            }
        }
    });
}

TEST_F(DemoHeaderTest, NumbersFitTheirFieldsAtBothEnds)
{
    for (const double extreme : {-1.0 * biggestNumber, 1.0 * biggestNumber}) {
        forEveryLivingCopy([extreme](StructSettings& settings) {
            const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
            for (StructSetting* setting : members) {
                setting->enableAdvancedMode(true);
                if (setting->settingType == StructSetting::NUM) {
                    setting->setValue(extreme);
                }
            }
            for (const StructSetting* setting : members) {
                SCOPED_TRACE(qPrintable(setting->descriptiveName));
                if (setting->settingType == StructSetting::NUM) {
                    EXPECT_GE(storedCount(*setting), 0);
                    EXPECT_LT(storedCount(*setting), std::pow(2, bitWidth(*setting)));
                }
            }
        });
    }
}

TEST_F(DemoHeaderTest, ABoundFollowsTheSettingThatItNames)
{
    const std::unique_ptr<StructSettings> lithium = generator.getProfileSettings("Lithium Ion");
    ASSERT_NE(lithium, nullptr);
    lithium->buildFormulaTrees();
    StructSetting* limit = lithium->getStructSettingByDescriptiveName("Current Limit");
    StructSetting* current = lithium->getStructSettingByDescriptiveName("Charge Current");
    ASSERT_NE(limit, nullptr);
    ASSERT_NE(current, nullptr);
    current->setValue(2.5);
    limit->setValue(1.0);
    EXPECT_DOUBLE_EQ(current->number(), 1.0);
    current->setValue(7.0);
    EXPECT_DOUBLE_EQ(current->number(), 1.0);
}

TEST_F(DemoHeaderTest, TextsFitTheirArrays)
{
    static const QRegularExpression plain("^[A-Za-z0-9_ ]+$");
    forEverySetting([](const StructSetting& setting) {
        if (!isText(setting)) {
            return;
        }
        EXPECT_EQ(setting.variableDataType, "char");
        EXPECT_TRUE(setting.isArray);
        EXPECT_EQ(setting.size, "auto");
        EXPECT_LT(defaultText(setting).toUtf8().size(), setting.arraySize);
        if (setting.settingType == StructSetting::LIST) {
            EXPECT_GE(setting.list.size(), 2);
            EXPECT_TRUE(setting.list.contains(defaultText(setting)));
            for (const QString& item : setting.list) {
                EXPECT_TRUE(item.contains(plain)) << qPrintable(item);
                EXPECT_LT(item.size(), setting.arraySize) << qPrintable(item);
            }
        }
    });
}

TEST_F(DemoHeaderTest, NamesGiveValidAndUniqueXmlTags)
{
    static const QRegularExpression validTag("^[a-z_][a-z0-9_]*$");
    for (const StructSettings* settings : allStructs()) {
        SCOPED_TRACE(qPrintable(settings->getDescriptiveName()));
        QSet<QString> tags{"chemistry"}; // an element of its own in every profile
        QSet<QString> variables;
        for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
            const QString tag =
                XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName);
            EXPECT_TRUE(tag.contains(validTag)) << qPrintable(tag);
            EXPECT_FALSE(tags.contains(tag)) << qPrintable(tag);
            tags.insert(tag);
            EXPECT_FALSE(variables.contains(setting->variableName))
                << qPrintable(setting->variableName);
            variables.insert(setting->variableName);
        }
    }
}
