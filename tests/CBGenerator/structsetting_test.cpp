#include "CBGenerator/structsetting.h"

#include "CBGenerator/formula.h"
#include "support/printing.h"
#include "support/schematext.h"

#include <QPointer>
#include <QSignalSpy>

using HParser::Formula;
using HParser::StructSetting;
using SchemaText::flagSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::textSetting;

TEST(StructSettingTest, KindsHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(StructSetting::NUM), 0);
    EXPECT_EQ(static_cast<int>(StructSetting::BOOL), 1);
    EXPECT_EQ(static_cast<int>(StructSetting::STRING), 2);
    EXPECT_EQ(static_cast<int>(StructSetting::LIST), 3);
}

TEST(StructSettingTest, FlagsReadAsTrueOrFalse)
{
    const auto setting = flagSetting();
    setting->setValue(true);
    EXPECT_EQ(setting->getValue(), "true");
    EXPECT_TRUE(setting->isOn());
    setting->setValue(false);
    EXPECT_EQ(setting->getValue(), "false");
    EXPECT_FALSE(setting->isOn());
}

TEST(StructSettingTest, UnknownKindReadsAsError)
{
    const StructSetting setting("char gap; // reserved, 1", nullptr);
    EXPECT_EQ(setting.getValue(), "ERROR");
    const StructSetting empty(nullptr);
    EXPECT_EQ(empty.getValue(), "ERROR");
}

TEST(StructSettingTest, AdvancedModeShowsInTheView)
{
    const auto setting = liveSetting(NumLine("a").advanced());
    const QSignalSpy views(setting.get(), &StructSetting::enableView);
    setting->enableAdvancedMode(true);
    setting->enableAdvancedMode(false);
    ASSERT_EQ(views.count(), 2);
    EXPECT_TRUE(views.at(0).at(0).toBool());
    EXPECT_FALSE(views.at(1).at(0).toBool());
}

TEST(StructSettingTest, BasicSettingKnowsNoAdvancedMode)
{
    const auto setting = liveSetting(NumLine("a"));
    const QSignalSpy views(setting.get(), &StructSetting::enableView);
    setting->enableAdvancedMode(true);
    EXPECT_FALSE(setting->advancedModeEnabled);
    EXPECT_EQ(views.count(), 0);
}

TEST(StructSettingTest, CutsTextsToTheirArray)
{
    const auto setting = textSetting(12);
    setting->setValue(QString("abcdefghijklmnop"));
    EXPECT_EQ(setting->getValue(), "abcdefghijk");
    setting->setValue(QString("abcdefghijk"));
    EXPECT_EQ(setting->getValue(), "abcdefghijk");
    setting->setValue(QString("short"));
    EXPECT_EQ(setting->getValue(), "short");
    setting->setValue(QString());
    EXPECT_EQ(setting->getValue(), "");
}

TEST(StructSettingTest, CutsListTextsToTheirArray)
{
    const auto setting = textSetting(4, "list");
    setting->setValue(QString("abcdef"));
    EXPECT_EQ(setting->getValue(), "abc");
}

TEST(StructSettingTest, KeepsTextsOfUnknownArraySizeWhole)
{
    const auto setting = textSetting(0);
    setting->setValue(QString(1000, 'x'));
    EXPECT_EQ(setting->getValue().size(), 1000);
}

TEST(StructSettingTest, ArrayOfOneHoldsOnlyTheEmptyText)
{
    const auto setting = textSetting(1);
    setting->setValue(QString("abc"));
    EXPECT_EQ(setting->getValue(), "");
}

TEST(StructSettingTest, NeverCutsACharacterInHalf)
{
    const auto setting = textSetting(4);
    setting->setValue(QString::fromUtf8("ab😀cd"));
    EXPECT_EQ(setting->getValue(), "ab");
    setting->setValue(QString::fromUtf8("a😀cd"));
    EXPECT_EQ(setting->getValue(), "a😀");
    setting->setValue(QString::fromUtf8("ab😀"));
    EXPECT_EQ(setting->getValue(), "ab");
}

TEST(StructSettingTest, TextsAndFlagsSendNoSignal)
{
    const auto text = textSetting(12);
    const auto flag = flagSetting();
    const QSignalSpy textChanges(text.get(), &StructSetting::numValueChanged);
    const QSignalSpy flagChanges(flag.get(), &StructSetting::numValueChanged);
    text->setValue(QString("abc"));
    flag->setValue(false);
    EXPECT_EQ(textChanges.count() + flagChanges.count(), 0);
}

TEST(StructSettingTest, CopiesDefaultsOfTheOtherKinds)
{
    for (const char* keyword : {"string", "list"}) {
        const auto text = textSetting(5, keyword);
        text->setValue(QString("x"));
        text->copyDefaultValueIntoCurrentValue();
        EXPECT_EQ(text->getValue(), "default text") << keyword; // not cut
    }
    const auto on = flagSetting("1");
    on->setValue(false);
    on->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(on->getValue(), "true");
    const auto off = flagSetting("true");
    off->setValue(true);
    off->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(off->getValue(), "false");
}

TEST(StructSettingTest, UpdatingKeepsFlagsAndCutsTexts)
{
    const auto flag = flagSetting();
    for (const bool value : {true, false}) {
        flag->setValue(value);
        flag->updateValue();
        EXPECT_EQ(flag->isOn(), value);
    }
    for (const char* keyword : {"string", "list"}) {
        const auto text = textSetting(5, keyword);
        text->copyDefaultValueIntoCurrentValue();
        text->updateValue();
        EXPECT_EQ(text->getValue(), "defa") << keyword;
    }
}

TEST(StructSettingTest, StoresValuesFromTextsAsTheyAre)
{
    const auto number = liveSetting(NumLine("a").defaultValue("7").advanced());
    const QSignalSpy changes(number.get(), &StructSetting::numValueChanged);
    number->storeValueFromText("250.75");
    EXPECT_EQ(number->number(), 250.75);
    for (const char* text : {"", "abc", "nan", "inf", "-inf", "1e999"}) {
        number->currentValue = 3.0;
        number->storeValueFromText(text);
        EXPECT_EQ(number->number(), 0) << text;
    }
    EXPECT_EQ(changes.count(), 0);

    const auto text = textSetting(4);
    text->storeValueFromText("longer than the array");
    EXPECT_EQ(text->getValue(), "longer than the array");

    const auto flag = flagSetting();
    flag->storeValueFromText("true");
    EXPECT_TRUE(flag->isOn());
    for (const char* other : {"True", "1", "", "false"}) {
        flag->setValue(true);
        flag->storeValueFromText(other);
        EXPECT_FALSE(flag->isOn()) << other;
    }
}

TEST(StructSettingTest, BuildsAllTreesOfANumber)
{
    StructSetting setting(NumLine("a"), nullptr);
    setting.buildFormulaTrees({});
    EXPECT_EQ(setting.evaluatedFormulas().size(), 5);
    for (const Formula* formula : setting.evaluatedFormulas()) {
        EXPECT_TRUE(formula->hasTree());
    }
    EXPECT_TRUE(setting.visualIndex->hasTree());
}

TEST(StructSettingTest, BuildsNoTreeForTheOtherKinds)
{
    for (const auto& setting : {textSetting(12), textSetting(12, "list"), flagSetting()}) {
        setting->buildFormulaTrees({});
        setting->attachMemberSettingSignalsToContainerFormulaSlots();
        setting->attachMemberFormulaSignalsToThisSettingsSlot();
        EXPECT_FALSE(setting->visualIndex->hasTree());
        EXPECT_TRUE(setting->evaluatedFormulas().isEmpty());
    }
}

TEST(StructSettingTest, UnusableVisualIndexBringsNothingDown)
{
    const auto setting = liveSetting(NumLine("a").index(")(%"));
    setting->attachMemberSettingSignalsToContainerFormulaSlots();
    setting->attachMemberFormulaSignalsToThisSettingsSlot();
    setting->setValue(5.0);
    EXPECT_EQ(setting->number(), 5);
    EXPECT_FALSE(setting->visualPosition().has_value());
}

TEST(StructSettingTest, OwnsItsFormulas)
{
    auto setting = liveSetting(NumLine("a"));
    const QPointer<Formula> bound = setting->lowerBound;
    const QPointer<Formula> index = setting->visualIndex;
    setting.reset();
    EXPECT_TRUE(bound.isNull());
    EXPECT_TRUE(index.isNull());
}

TEST(StructSettingTest, UnknownKindIsSafeToHandle)
{
    StructSetting original("char gap; // reserved, 1", nullptr);
    const std::unique_ptr<StructSetting> copy(original.deepCopy());
    EXPECT_EQ(copy->settingType, StructSetting::UNKNOWN);
    EXPECT_EQ(copy->variableName, "gap");
    copy->buildFormulaTrees({});
    copy->copyDefaultValueIntoCurrentValue();
    copy->attachMemberSettingSignalsToContainerFormulaSlots();
    copy->attachMemberFormulaSignalsToThisSettingsSlot();
    copy->updateValue();
    copy->enableAdvancedMode(true);
    copy->printSetting();
    EXPECT_FALSE(copy->visualPosition().has_value());
    EXPECT_EQ(copy->getValue(), "ERROR");
}
