#include "CBGenerator/structsetting.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"

#include <gtest/gtest.h>

#include <QPointer>
#include <QSignalSpy>

#include <cmath>
#include <csignal>
#include <limits>
#include <memory>

using HParser::Formula;
using HParser::StructSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::utf8;

namespace
{
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

std::unique_ptr<StructSetting> textSetting(int arraySize, const char* keyword = "string")
{
    QString line = QString("char t[%1]; // %2, auto, \"T\", G, \"default text\", 0, ")
                       .arg(QString::number(arraySize), QString(keyword));
    if (QString(keyword) == "list") {
        line += "\"One\", \"Two\", ";
    }
    return std::make_unique<StructSetting>(line + "basic", nullptr);
}

std::unique_ptr<StructSetting> flagSetting(const char* defaultText = "1")
{
    return std::make_unique<StructSetting>(
        QString("char f; // bool, 1, \"F\", G, %1, 0, basic").arg(QString(defaultText)), nullptr);
}

/// The text of a number that was stored unchanged.
std::string textOf(double value)
{
    auto setting = liveSetting(NumLine("a"));
    setting->currentValue = value;
    return utf8(setting->getValue());
}

/// Returns the number that setValue() stores.
double stored(const NumLine& line, double value)
{
    auto setting = liveSetting(line);
    setting->setValue(value);
    return setting->number();
}

const NumLine& zeroToTen()
{
    static const NumLine line = NumLine("a").bounds("0", "10").decimals("1");
    return line;
}

NumLine wholeNumbers()
{
    return NumLine("a").bounds("-1000", "1000").decimals("0");
}
} // namespace

TEST(StructSettingTest, KindsHaveTheirNumbers)
{
    EXPECT_EQ(static_cast<int>(StructSetting::NUM), 0);
    EXPECT_EQ(static_cast<int>(StructSetting::BOOL), 1);
    EXPECT_EQ(static_cast<int>(StructSetting::STRING), 2);
    EXPECT_EQ(static_cast<int>(StructSetting::LIST), 3);
}

TEST(StructSettingTest, NumbersHaveSixSignificantDigits)
{
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(5), "5");
    EXPECT_EQ(textOf(-2.5), "-2.5");
    EXPECT_EQ(textOf(3.14159265), "3.14159");
    EXPECT_EQ(textOf(0.0000125), "1.25e-05");
    EXPECT_EQ(textOf(0.000125), "0.000125");
    EXPECT_EQ(textOf(999999), "999999");
    EXPECT_EQ(textOf(1234567), "1.23457e+06");
    EXPECT_EQ(textOf(1e100), "1e+100");
}

TEST(StructSettingTest, NumberTextsTieAwayFromZero)
{
    EXPECT_EQ(textOf(1234565), "1.23457e+06");
    EXPECT_EQ(textOf(-1234565), "-1.23457e+06");
    EXPECT_EQ(textOf(100000.5), "100001");
}

TEST(StructSettingTest, MinusZeroReadsAsZero)
{
    EXPECT_EQ(textOf(-0.0), "0");
    auto setting = liveSetting(wholeNumbers());
    setting->setValue(-0.0);
    EXPECT_EQ(utf8(setting->getValue()), "0");
    setting->setValue(-0.25);
    EXPECT_EQ(utf8(setting->getValue()), "0");
}

TEST(StructSettingTest, FlagsReadAsTrueOrFalse)
{
    const auto setting = flagSetting();
    setting->setValue(true);
    EXPECT_EQ(utf8(setting->getValue()), "true");
    EXPECT_TRUE(setting->isOn());
    setting->setValue(false);
    EXPECT_EQ(utf8(setting->getValue()), "false");
    EXPECT_FALSE(setting->isOn());
}

TEST(StructSettingTest, UnknownKindReadsAsError)
{
    const StructSetting setting("char gap; // reserved, 1", nullptr);
    EXPECT_EQ(utf8(setting.getValue()), "ERROR");
    const StructSetting empty(nullptr);
    EXPECT_EQ(utf8(empty.getValue()), "ERROR");
}

TEST(StructSettingTest, ClampsToUpperBound)
{
    EXPECT_EQ(stored(zeroToTen(), 12.34), 10);
    EXPECT_EQ(stored(zeroToTen(), infinity), 10);
}

TEST(StructSettingTest, ClampsToLowerBound)
{
    EXPECT_EQ(stored(zeroToTen(), -1), 0);
    EXPECT_EQ(stored(zeroToTen(), -infinity), 0);
}

TEST(StructSettingTest, RoundsToDecimalPlaces)
{
    EXPECT_DOUBLE_EQ(stored(zeroToTen(), 3.25), 3.3);
    EXPECT_DOUBLE_EQ(stored(zeroToTen(), 3.24), 3.2);
    EXPECT_DOUBLE_EQ(stored(zeroToTen(), 0.125), 0.1);
    EXPECT_DOUBLE_EQ(stored(NumLine("a").decimals("3"), 1.23456), 1.235);
}

TEST(StructSettingTest, RoundsHalvesUpward)
{
    EXPECT_EQ(stored(wholeNumbers(), 2.5), 3);
    EXPECT_EQ(stored(wholeNumbers(), -2.5), -2);
    EXPECT_EQ(stored(wholeNumbers(), -2.6), -3);
    EXPECT_EQ(stored(wholeNumbers(), -0.5), 0);
}

TEST(StructSettingTest, ClampsBeforeRounding)
{
    EXPECT_EQ(stored(NumLine("a").bounds("0", "2.5"), 9), 3);
    EXPECT_EQ(stored(NumLine("a").bounds("2.4", "9"), 0), 2);
}

TEST(StructSettingTest, UpperBoundWinsOverAGreaterLowerBound)
{
    const NumLine line = NumLine("a").bounds("5", "3");
    for (const double value : {-100.0, 0.0, 3.0, 4.0, 5.0, 100.0}) {
        EXPECT_EQ(stored(line, value), 3) << value;
    }
}

TEST(StructSettingTest, InfiniteBoundsDoNotLimit)
{
    const NumLine line = NumLine("a").bounds("0-1/0", "1/0").decimals("1");
    EXPECT_DOUBLE_EQ(stored(line, 123456.78), 123456.8);
    EXPECT_DOUBLE_EQ(stored(line, -123456.78), -123456.8);
}

TEST(StructSettingTest, RoundingSaturatesAtThirtyTwoBits)
{
    const NumLine wide = NumLine("a").bounds("0-1/0", "1/0");
    EXPECT_EQ(stored(wide, 1e12), 2147483647.0);
    EXPECT_EQ(stored(wide, -1e12), -2147483648.0);
    EXPECT_EQ(stored(wide, infinity), 2147483647.0);
    EXPECT_EQ(stored(wide, -infinity), -2147483648.0);
    const NumLine fine = NumLine("a").bounds("0", "100000000").decimals("3");
    EXPECT_DOUBLE_EQ(stored(fine, 50000000), 2147483.647);
}

TEST(StructSettingTest, NotANumberIsTakenAsTheLowerBound)
{
    EXPECT_EQ(stored(NumLine("a").bounds("2", "10"), notANumber), 2);
    auto setting = liveSetting(NumLine("a").bounds("2", "10"));
    EXPECT_EQ(setting->setInBoundsAndDecPlaces(notANumber), 2);
}

TEST(StructSettingTest, SurvivesBoundsThatAreNoNumbers)
{
    EXPECT_EQ(stored(NumLine("a").bounds("0/0", "0/0"), 7), 7);
    EXPECT_EQ(stored(NumLine("a").bounds("0/0", "0/0"), notANumber), 0);
    EXPECT_EQ(stored(NumLine("a").bounds("0", "0/0"), -3), 0);
    EXPECT_EQ(stored(NumLine("a").bounds("0/0", "5"), 9), 5);
}

TEST(StructSettingTest, UnusableDecimalPlacesGiveZero)
{
    for (const char* places : {"0/0", "400", "0-400", "1/0"}) {
        EXPECT_EQ(stored(NumLine("a").decimals(places), 5), 0) << places;
    }
}

TEST(StructSettingTest, SignalsEveryNewNumber)
{
    const auto setting = liveSetting(zeroToTen());
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    setting->setValue(5.0);
    setting->setValue(5.0);
    setting->setValue(99.0);
    EXPECT_EQ(changes.count(), 3);
}

TEST(StructSettingTest, StoresBeforeItSignals)
{
    const auto setting = liveSetting(zeroToTen());
    double seen = -1;
    QObject::connect(setting.get(), &StructSetting::numValueChanged, setting.get(),
                     [&] { seen = setting->number(); });
    setting->setValue(4.0);
    EXPECT_EQ(seen, 4);
}

TEST(StructSettingTest, PreviewNeitherStoresNorSignals)
{
    const auto setting = liveSetting(zeroToTen());
    setting->setValue(5.0);
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    EXPECT_EQ(setting->setInBoundsAndDecPlaces(12.34), 10);
    EXPECT_DOUBLE_EQ(setting->setInBoundsAndDecPlaces(3.25), 3.3);
    EXPECT_EQ(setting->setInBoundsAndDecPlaces(-1), 0);
    EXPECT_EQ(setting->number(), 5);
    EXPECT_EQ(changes.count(), 0);
}

TEST(StructSettingTest, PreviewIgnoresTheAdvancedRule)
{
    const auto setting = liveSetting(NumLine("a").defaultValue("7").advanced());
    EXPECT_EQ(setting->setInBoundsAndDecPlaces(20), 20);
}

TEST(StructSettingTest, AdvancedNumberSnapsBackToItsDefaultOutsideAdvancedMode)
{
    const auto setting = liveSetting(NumLine("a").defaultValue("7").advanced());
    setting->currentValue = 1.0;
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    for (const double value : {20.0, 0.0, 7.0}) {
        setting->setValue(value);
        EXPECT_EQ(setting->number(), 7);
    }
    EXPECT_EQ(changes.count(), 3);
}

TEST(StructSettingTest, SnappedBackDefaultIsClampedAndRounded)
{
    EXPECT_EQ(stored(NumLine("a").defaultValue("200").advanced(), 20), 100);
    EXPECT_EQ(stored(NumLine("a").defaultValue("2.5").advanced(), 20), 3);
}

TEST(StructSettingTest, AdvancedNumberIsFreeInAdvancedMode)
{
    const auto setting = liveSetting(NumLine("a").defaultValue("7").advanced());
    setting->enableAdvancedMode(true);
    EXPECT_TRUE(setting->advancedModeEnabled);
    setting->setValue(20.0);
    EXPECT_EQ(setting->number(), 20);
    setting->enableAdvancedMode(false);
    EXPECT_EQ(setting->number(), 20);
    setting->setValue(20.0);
    EXPECT_EQ(setting->number(), 7);
}

TEST(StructSettingTest, BasicNumberIsFreeWithoutAdvancedMode)
{
    EXPECT_EQ(stored(NumLine("a").defaultValue("7"), 20), 20);
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
    EXPECT_EQ(utf8(setting->getValue()), "abcdefghijk");
    setting->setValue(QString("abcdefghijk"));
    EXPECT_EQ(utf8(setting->getValue()), "abcdefghijk");
    setting->setValue(QString("short"));
    EXPECT_EQ(utf8(setting->getValue()), "short");
    setting->setValue(QString());
    EXPECT_EQ(utf8(setting->getValue()), "");
}

TEST(StructSettingTest, CutsListTextsToTheirArray)
{
    const auto setting = textSetting(4, "list");
    setting->setValue(QString("abcdef"));
    EXPECT_EQ(utf8(setting->getValue()), "abc");
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
    EXPECT_EQ(utf8(setting->getValue()), "");
}

TEST(StructSettingTest, NeverCutsACharacterInHalf)
{
    const auto setting = textSetting(4);
    setting->setValue(QString::fromUtf8("ab😀cd"));
    EXPECT_EQ(utf8(setting->getValue()), "ab");
    setting->setValue(QString::fromUtf8("a😀cd"));
    EXPECT_EQ(utf8(setting->getValue()), "a😀");
    setting->setValue(QString::fromUtf8("ab😀"));
    EXPECT_EQ(utf8(setting->getValue()), "ab");
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

TEST(StructSettingTest, CopiesDefaultNumberAsItIs)
{
    const auto setting =
        std::make_unique<StructSetting>(NumLine("a").defaultValue("250.75 / 2"), nullptr);
    setting->buildFormulaTrees({});
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    setting->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(setting->number(), 125.375);
    EXPECT_EQ(changes.count(), 0);
}

TEST(StructSettingTest, CopiesDefaultsOfTheOtherKinds)
{
    for (const char* keyword : {"string", "list"}) {
        const auto text = textSetting(5, keyword);
        text->setValue(QString("x"));
        text->copyDefaultValueIntoCurrentValue();
        EXPECT_EQ(utf8(text->getValue()), "default text") << keyword; // not cut
    }
    const auto on = flagSetting("1");
    on->setValue(false);
    on->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(utf8(on->getValue()), "true");
    const auto off = flagSetting("true");
    off->setValue(true);
    off->copyDefaultValueIntoCurrentValue();
    EXPECT_EQ(utf8(off->getValue()), "false");
}

TEST(StructSettingTest, UpdatingClampsAndRoundsANumberAgain)
{
    const auto setting = liveSetting(NumLine("a").defaultValue("250.75"));
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    setting->updateValue();
    EXPECT_EQ(setting->number(), 100);
    EXPECT_EQ(changes.count(), 1);
}

TEST(StructSettingTest, UpdatingCutsANumberToSixDigits)
{
    const auto setting = liveSetting(NumLine("a").bounds("0", "9999999").decimals("1"));
    setting->setValue(1234567.0);
    EXPECT_EQ(setting->number(), 1234567);
    setting->updateValue();
    EXPECT_EQ(setting->number(), 1234570);
}

TEST(StructSettingTest, UpdatingSnapsAnAdvancedNumberBack)
{
    const auto setting = liveSetting(NumLine("a").defaultValue("7").advanced());
    setting->currentValue = 20.0;
    setting->updateValue();
    EXPECT_EQ(setting->number(), 7);
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
        EXPECT_EQ(utf8(text->getValue()), "defa") << keyword;
    }
}

TEST(StructSettingTest, ReclampsWhenAFormulaReportsAChange)
{
    const auto setting = liveSetting(zeroToTen());
    setting->currentValue = 55.0;
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    setting->on_formulasMemberSettingChanged();
    EXPECT_EQ(setting->number(), 10);
    EXPECT_EQ(changes.count(), 1);
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
    EXPECT_EQ(utf8(text->getValue()), "longer than the array");

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
    EXPECT_EQ(utf8(copy->variableName), "current");
    EXPECT_EQ(utf8(copy->variableDataType), "unsigned short");
    EXPECT_EQ(utf8(copy->size), "16");
    EXPECT_TRUE(copy->isArray);
    EXPECT_EQ(copy->arraySize, 3);
    EXPECT_EQ(utf8(copy->descriptiveName), "Current");
    EXPECT_EQ(utf8(copy->units), "A");
    EXPECT_EQ(utf8(copy->categoryLabel), "Charging");
    EXPECT_TRUE(copy->isBasic);
    EXPECT_EQ(utf8(copy->lowerBound->toString()), "0.5");
    EXPECT_EQ(utf8(copy->upperBound->toString()), "max * 2");
    EXPECT_EQ(utf8(copy->scaleFactor->toString()), "0.1");
    EXPECT_EQ(utf8(copy->decimalPlaces->toString()), "1");
    EXPECT_EQ(utf8(std::get<Formula*>(copy->defaultValue)->toString()), "2.0");
    EXPECT_EQ(utf8(copy->visualIndex->toString()), "3");
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
    EXPECT_NE(utf8(copy->getValue()), "42");
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
    EXPECT_EQ(utf8(std::get<QString>(textCopy->defaultValue)), "default text");

    const auto list = textSetting(12, "list");
    const std::unique_ptr<StructSetting> listCopy(list->deepCopy());
    EXPECT_EQ(listCopy->settingType, StructSetting::LIST);
    EXPECT_EQ(listCopy->list, QStringList({"One", "Two"}));
    EXPECT_EQ(utf8(listCopy->visualIndex->toString()), "0");
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

TEST(StructSettingTest, UnknownKindIsSafeToHandle)
{
    StructSetting original("char gap; // reserved, 1", nullptr);
    const std::unique_ptr<StructSetting> copy(original.deepCopy());
    EXPECT_EQ(copy->settingType, StructSetting::UNKNOWN);
    EXPECT_EQ(utf8(copy->variableName), "gap");
    copy->buildFormulaTrees({});
    copy->copyDefaultValueIntoCurrentValue();
    copy->attachMemberSettingSignalsToContainerFormulaSlots();
    copy->attachMemberFormulaSignalsToThisSettingsSlot();
    copy->updateValue();
    copy->enableAdvancedMode(true);
    copy->printSetting();
    EXPECT_FALSE(copy->visualPosition().has_value());
    EXPECT_EQ(utf8(copy->getValue()), "ERROR");
}
