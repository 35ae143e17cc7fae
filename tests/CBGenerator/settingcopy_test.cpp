// What a copy of a setting takes over.

#include "CBGenerator/formula.h"
#include "support/printing.h"
#include "support/schematext.h"

using HParser::Formula;
using HParser::StructSetting;
using SchemaText::flagSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::textSetting;

TEST(StructSettingTest, CopiesTheDescriptionOfANumber)
{
    QObject parent;
    StructSetting original(
        "unsigned short current[3]; // num, 16, 0.5, max * 2, x0.1, 1, \"Current\", "
        "\"A\", Charging, 2.0, 3, basic",
        &parent);
    const std::unique_ptr<StructSetting> copy(original.deepCopy());
    EXPECT_EQ(copy->parent(), nullptr);
    EXPECT_EQ(copy->settingType, StructSetting::NUM);
    EXPECT_EQ(copy->variableName, "current");
    EXPECT_EQ(copy->variableDataType, "unsigned short");
    EXPECT_EQ(copy->size, "16");
    EXPECT_TRUE(copy->isArray);
    EXPECT_EQ(copy->arraySize, 3);
    EXPECT_EQ(copy->descriptiveName, "Current");
    EXPECT_EQ(copy->units, "A");
    EXPECT_EQ(copy->categoryLabel, "Charging");
    EXPECT_TRUE(copy->isBasic);
    EXPECT_EQ(copy->lowerBound->toString(), "0.5");
    EXPECT_EQ(copy->upperBound->toString(), "max * 2");
    EXPECT_EQ(copy->scaleFactor->toString(), "0.1");
    EXPECT_EQ(copy->decimalPlaces->toString(), "1");
    EXPECT_EQ(std::get<Formula*>(copy->defaultValue)->toString(), "2.0");
    EXPECT_EQ(copy->visualIndex->toString(), "3");
    EXPECT_NE(copy->lowerBound, original.lowerBound);
    EXPECT_NE(copy->upperBound, original.upperBound);
    EXPECT_NE(copy->scaleFactor, original.scaleFactor);
    EXPECT_NE(copy->decimalPlaces, original.decimalPlaces);
    EXPECT_NE(std::get<Formula*>(copy->defaultValue), std::get<Formula*>(original.defaultValue));
    EXPECT_NE(copy->visualIndex, original.visualIndex);
}

TEST(StructSettingTest, CopiesNeitherValueNorTreesNorAdvancedMode)
{
    const auto original = liveSetting(NumLine("a").defaultValue("7").advanced());
    original->enableAdvancedMode(true);
    original->setValue(42.0);
    const std::unique_ptr<StructSetting> copy(original->deepCopy());
    EXPECT_NE(copy->getValue(), "42");
    EXPECT_FALSE(copy->advancedModeEnabled);
    EXPECT_FALSE(copy->isBasic);
    for (const Formula* formula : copy->evaluatedFormulas()) {
        EXPECT_FALSE(formula->hasTree());
    }
}

TEST(StructSettingTest, CopiesTheOtherKinds)
{
    const auto flag = flagSetting("1");
    const std::unique_ptr<StructSetting> flagCopy(flag->deepCopy());
    EXPECT_EQ(flagCopy->settingType, StructSetting::BOOL);
    EXPECT_TRUE(std::get<bool>(flagCopy->defaultValue));

    const auto text = textSetting(12);
    const std::unique_ptr<StructSetting> textCopy(text->deepCopy());
    EXPECT_EQ(textCopy->settingType, StructSetting::STRING);
    EXPECT_EQ(textCopy->arraySize, 12);
    EXPECT_EQ(std::get<QString>(textCopy->defaultValue), "default text");

    const auto list = textSetting(12, "list");
    const std::unique_ptr<StructSetting> listCopy(list->deepCopy());
    EXPECT_EQ(listCopy->settingType, StructSetting::LIST);
    EXPECT_EQ(listCopy->list, QStringList({"One", "Two"}));
    EXPECT_EQ(listCopy->visualIndex->toString(), "0");
}

TEST(StructSettingTest, CopyOutlivesTheOriginal)
{
    auto original = liveSetting(NumLine("a").bounds("0", "10").defaultValue("4"));
    const std::unique_ptr<StructSetting> copy(original->deepCopy());
    original.reset();
    copy->buildFormulaTrees({});
    copy->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(copy->number(), 4);
    copy->setValue(99.0);
    EXPECT_EQ(copy->number(), 10);
}
