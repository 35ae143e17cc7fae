// The numbers and texts that the demo's schema allows.

#include "base/xmlutility.h"
#include "support/demoheadertest.h"

#include <QRegularExpression>
#include <QSet>

TEST_F(DemoHeaderTest, FormulasNameOnlyShownNumbersAndDefaultsOnlyEarlierOnes)
{
    int bounds = 0;
    int defaults = 0;
    forEveryLivingCopy([&](StructSettings& settings) {
        const QList<StructSetting*> members = settings.getOriginalOrderStructSettings();
        for (StructSetting* setting : members) {
            SCOPED_TRACE(setting->descriptiveName);
            const HParser::Formula* defaultFormula =
                setting->settingType == StructSetting::NUM
                    ? std::get<HParser::Formula*>(setting->defaultValue)
                    : nullptr;
            for (const HParser::Formula* formula : setting->evaluatedFormulas()) {
                formula->visitSettings([&](StructSetting* named) {
                    ASSERT_NE(named, nullptr);
                    EXPECT_TRUE(contains(settings.getStructSettings(), named));
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
            SCOPED_TRACE(setting->descriptiveName);
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
                    << setting->descriptiveName;
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
                SCOPED_TRACE(setting->descriptiveName);
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
            EXPECT_TRUE(contains(setting.list, defaultText(setting)));
            for (const QString& item : setting.list) {
                EXPECT_TRUE(contains(item, plain));
                EXPECT_LT(item.size(), setting.arraySize) << item;
            }
        }
    });
}

TEST_F(DemoHeaderTest, NamesGiveValidAndUniqueXmlTags)
{
    static const QRegularExpression validTag("^[a-z_][a-z0-9_]*$");
    for (const StructSettings* settings : allStructs()) {
        SCOPED_TRACE(settings->getDescriptiveName());
        QSet<QString> tags{"chemistry"}; // a separate element in every profile
        QSet<QString> variables;
        for (const StructSetting* setting : settings->getOriginalOrderStructSettings()) {
            const QString tag =
                XMLGeneratorParser::XMLUtility::xmlTagFromDescriptiveName(setting->descriptiveName);
            EXPECT_TRUE(contains(tag, validTag));
            EXPECT_FALSE(tags.contains(tag)) << tag;
            tags.insert(tag);
            EXPECT_FALSE(variables.contains(setting->variableName)) << setting->variableName;
            variables.insert(setting->variableName);
        }
    }
}
