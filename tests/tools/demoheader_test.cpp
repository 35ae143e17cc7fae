// The members of the demo's schema.

#include "CBGenerator/schemacheck.h"
#include "support/demoheadertest.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

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
            << chemistry->getDescriptiveName();
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
            SCOPED_TRACE(settings->getDescriptiveName() + ": " + shown.at(i)->descriptiveName);
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
            SCOPED_TRACE(settings->getDescriptiveName() + ": " + setting->descriptiveName);
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
        SCOPED_TRACE(chemistry->getDescriptiveName());
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
        EXPECT_TRUE(contains(units, unit)) << unit;
    }
    for (const char* factor : {"1", "0.1", "0.01", "0.001"}) {
        EXPECT_TRUE(contains(scaleFactors, factor)) << factor;
    }
}
