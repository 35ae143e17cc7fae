// The value of a number: its text, its bounds, its decimal places and its advanced mode.

#include "support/printing.h"
#include "support/schematext.h"

#include <QSignalSpy>

#include <limits>

using HParser::StructSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;

namespace
{
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// The text of a number that was stored unchanged.
QString textOf(double value)
{
    const auto setting = liveSetting(NumLine("a"));
    setting->currentValue = value;
    return setting->getValue();
}

/// Returns the number that setValue() stores.
double stored(const NumLine& line, double value)
{
    const auto setting = liveSetting(line);
    setting->setValue(value);
    return setting->number();
}

NumLine zeroToTen()
{
    return NumLine("a").bounds("0", "10").decimals("1");
}

NumLine wholeNumbers()
{
    return NumLine("a").bounds("-1000", "1000").decimals("0");
}
} // namespace

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
    EXPECT_EQ(setting->getValue(), "0");
    setting->setValue(-0.25);
    EXPECT_EQ(setting->getValue(), "0");
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

TEST(StructSettingTest, ReclampsWhenAFormulaReportsAChange)
{
    const auto setting = liveSetting(zeroToTen());
    setting->currentValue = 55.0;
    const QSignalSpy changes(setting.get(), &StructSetting::numValueChanged);
    setting->on_formulasMemberSettingChanged();
    EXPECT_EQ(setting->number(), 10);
    EXPECT_EQ(changes.count(), 1);
}
