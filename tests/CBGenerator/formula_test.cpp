#include "CBGenerator/formula.h"

#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <csignal>

using HParser::Formula;
using HParser::StructSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::utf8;
using ::testing::KilledBySignal;

namespace
{
/// Evaluates a setting's upper bound with standard output redirected to where a death test reads
/// it.
void evaluateUpperBound(const char* formula)
{
    sendStandardOutputToStandardError();
    const auto setting =
        liveSetting(NumLine("current").label("Charge Current").bounds("0", QString(formula)));
    setting->upperBound->toDouble();
}
} // namespace

TEST(FormulaTest, KeepsItsTextAsGiven)
{
    EXPECT_EQ(utf8(Formula(" maxCurrent *  2 ", nullptr).toString()), " maxCurrent *  2 ");
}

TEST(FormulaTest, BuildsNothingByItself)
{
    EXPECT_FALSE(Formula("4.2", nullptr).hasTree());
}

TEST(FormulaTest, EvaluatesWithoutSettings)
{
    Formula formula("4.2", nullptr);
    formula.buildFormulaTree({});
    ASSERT_TRUE(formula.hasTree());
    EXPECT_DOUBLE_EQ(formula.toDouble(), 4.2);
}

TEST(FormulaTest, FollowsTheSettingItNames)
{
    const auto maxCurrent = liveSetting(NumLine("maxCurrent"));
    maxCurrent->setValue(5.0);
    Formula formula("maxCurrent * 2 + 1", nullptr);
    formula.buildFormulaTree({maxCurrent.get()});
    EXPECT_EQ(formula.toDouble(), 11);
    maxCurrent->setValue(7.0);
    EXPECT_EQ(formula.toDouble(), 15);
}

TEST(FormulaTest, ReportsChangesOnceAttached)
{
    const auto a = liveSetting(NumLine("a"));
    const auto b = liveSetting(NumLine("b"));
    const auto other = liveSetting(NumLine("other"));
    Formula formula("a * (b + 1)", nullptr);
    formula.buildFormulaTree({a.get(), b.get(), other.get()});
    const QSignalSpy changes(&formula, &Formula::memberSettingChanged);
    a->setValue(1.0);
    EXPECT_EQ(changes.count(), 0);
    formula.attachSettingValueChangedSignals();
    a->setValue(2.0);
    EXPECT_EQ(changes.count(), 1);
    b->setValue(2.0);
    EXPECT_EQ(changes.count(), 2);
    other->setValue(2.0);
    EXPECT_EQ(changes.count(), 2);
}

TEST(FormulaTest, ReportsAChangeForEachTimeThatTheSettingIsNamed)
{
    const QList<QPair<QString, int>> formulas = {
        {"a", 1}, {"a + a", 2}, {"a * (b + a) / a", 3}, {"(a - b) * b", 1}, {"b", 0}};
    for (const auto& expected : formulas) {
        const auto a = liveSetting(NumLine("a"));
        const auto b = liveSetting(NumLine("b"));
        Formula formula(expected.first, nullptr);
        formula.buildFormulaTree({a.get(), b.get()});
        formula.attachSettingValueChangedSignals();
        const QSignalSpy changes(&formula, &Formula::memberSettingChanged);
        a->setValue(2.0);
        EXPECT_EQ(changes.count(), expected.second) << expected.first.toStdString();
    }
}

TEST(FormulaTest, PassesOnAReportedChange)
{
    Formula formula("1", nullptr);
    const QSignalSpy changes(&formula, &Formula::memberSettingChanged);
    formula.on_memberSettingValueChanged();
    EXPECT_EQ(changes.count(), 1);
}

TEST(FormulaTest, MalformedTextLeavesNoTree)
{
    Formula formula("5 +", nullptr);
    formula.buildFormulaTree({});
    EXPECT_FALSE(formula.hasTree());
    formula.attachSettingValueChangedSignals();
    int visited = 0;
    formula.visitSettings([&](StructSetting*) { ++visited; });
    EXPECT_EQ(visited, 0);
}

TEST(FormulaTest, OutlivesTheSettingsItNames)
{
    auto a = liveSetting(NumLine("a"));
    Formula formula("a", nullptr);
    formula.buildFormulaTree({a.get()});
    formula.attachSettingValueChangedSignals();
    a.reset();
}

TEST(FormulaDeathTest, EvaluatingWithoutATreeIsFatal)
{
    EXPECT_EXIT(Formula("4.2", nullptr).toDouble(), KilledBySignal(SIGABRT),
                "ASSERT: .* in file CBGenerator/formula");
}

TEST(FormulaDeathTest, NamesFormulaAndSettingOfAMalformedText)
{
    EXPECT_EXIT(evaluateUpperBound("5 +"), KilledBySignal(SIGABRT), "ASSERT: ");
    EXPECT_EXIT(evaluateUpperBound("5 +"), KilledBySignal(SIGABRT), "\"5 \\+\"");
    EXPECT_EXIT(evaluateUpperBound("5 +"), KilledBySignal(SIGABRT), "Charge Current");
}

TEST(FormulaDeathTest, NamesFormulaAndSettingOfAnUnknownName)
{
    EXPECT_EXIT(evaluateUpperBound("missing * 2"), KilledBySignal(SIGABRT), "ASSERT: ");
    EXPECT_EXIT(evaluateUpperBound("missing * 2"), KilledBySignal(SIGABRT), "\"missing \\* 2\"");
    EXPECT_EXIT(evaluateUpperBound("missing * 2"), KilledBySignal(SIGABRT), "Charge Current");
}

TEST(FormulaDeathTest, DoubledParenthesesAreFatalWhenEvaluated)
{
    EXPECT_EXIT(evaluateUpperBound("((4))"), KilledBySignal(SIGABRT), "\\(\\(4\\)\\)");
}

TEST(FormulaDeathTest, UnknownOperatorIsFatalWhenEvaluated)
{
    EXPECT_EXIT(evaluateUpperBound("5 % 3"), KilledBySignal(SIGABRT), "5 % 3");
}
