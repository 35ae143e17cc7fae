#include "CBGenerator/formulanode.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <cmath>
#include <csignal>
#include <memory>

using HParser::Formula;
using HParser::FormulaNodeMathOp;
using HParser::FormulaNodeNum;
using HParser::FormulaNodeVar;
using HParser::StructSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::utf8;

namespace
{
double combine(double left, char operation, double right)
{
    FormulaNodeMathOp node;
    node.setOpType(QLatin1Char(operation));
    node.left = std::make_unique<FormulaNodeNum>(left);
    node.right = std::make_unique<FormulaNodeNum>(right);
    return node.evaluate();
}

double valueOf(StructSetting& setting)
{
    return FormulaNodeVar(&setting, setting.variableName).evaluate();
}
} // namespace

TEST(FormulaNodeTest, NumberIsItsValue)
{
    const FormulaNodeNum node(4.25);
    EXPECT_EQ(node.evaluate(), 4.25);
    EXPECT_EQ(utf8(node.getFormulaNodeType()), "Num");
}

TEST(FormulaNodeTest, OperatorsCombineTheirOperands)
{
    EXPECT_EQ(combine(7, '+', 2), 9);
    EXPECT_EQ(combine(7, '-', 2), 5);
    EXPECT_EQ(combine(7, '*', 2), 14);
    EXPECT_EQ(combine(7, '/', 2), 3.5);
    EXPECT_EQ(utf8(FormulaNodeMathOp().getFormulaNodeType()), "MathOp");
}

TEST(FormulaNodeTest, OperatorsHaveTheirNumbers)
{
    FormulaNodeMathOp node;
    const char* const characters = "+-*/";
    for (int i = 0; i < 4; ++i) {
        node.setOpType(QLatin1Char(characters[i]));
        EXPECT_EQ(node.opType, i);
    }
}

TEST(FormulaNodeTest, OtherCharactersLeaveTheOperatorAsItIs)
{
    FormulaNodeMathOp node;
    const int unset = node.opType;
    EXPECT_TRUE(unset < 0 || unset > 3);
    node.setOpType(QLatin1Char('%'));
    EXPECT_EQ(node.opType, unset);
}

TEST(FormulaNodeTest, UnsetOperatorGivesTheLeftValue)
{
    EXPECT_EQ(combine(7, '%', 2), 7);
}

TEST(FormulaNodeTest, DivisionFollowsFloatingPointRules)
{
    EXPECT_TRUE(std::isinf(combine(1, '/', 0)));
    EXPECT_GT(combine(1, '/', 0), 0);
    EXPECT_LT(combine(-1, '/', 0), 0);
    EXPECT_TRUE(std::isinf(combine(-1, '/', 0)));
    EXPECT_TRUE(std::isnan(combine(0, '/', 0)));
}

TEST(FormulaNodeTest, VariableReadsTheSettingsText)
{
    const auto number = liveSetting(NumLine("a"));
    number->currentValue = 1234567.0;
    EXPECT_EQ(valueOf(*number), 1234570); // six significant digits
    number->currentValue = 2.5;
    EXPECT_EQ(valueOf(*number), 2.5);
    EXPECT_EQ(utf8(FormulaNodeVar(number.get(), "a").getFormulaNodeType()), "NodeVar");
}

TEST(FormulaNodeTest, FlagCountsAsZero)
{
    StructSetting flag("char f; // bool, 1, \"F\", G, 1, 0, basic", nullptr);
    flag.setValue(true);
    EXPECT_EQ(valueOf(flag), 0);
    flag.setValue(false);
    EXPECT_EQ(valueOf(flag), 0);
}

TEST(FormulaNodeTest, TextCountsAsTheNumberItReads)
{
    StructSetting text("char t[20]; // string, auto, \"T\", G, \"\", 0, basic", nullptr);
    text.setValue(QString("2.5"));
    EXPECT_EQ(valueOf(text), 2.5);
    text.setValue(QString("2.5 A"));
    EXPECT_EQ(valueOf(text), 0);
    text.setValue(QString());
    EXPECT_EQ(valueOf(text), 0);
}

TEST(FormulaNodeTest, AttachesEverySettingBelow)
{
    const auto first = liveSetting(NumLine("a"));
    const auto second = liveSetting(NumLine("b"));
    FormulaNodeMathOp node;
    node.left = std::make_unique<FormulaNodeVar>(first.get(), "a");
    auto inner = std::make_unique<FormulaNodeMathOp>();
    inner->left = std::make_unique<FormulaNodeNum>(1);
    inner->right = std::make_unique<FormulaNodeVar>(second.get(), "b");
    node.right = std::move(inner);

    Formula formula("a + (1 + b)", nullptr);
    const QSignalSpy changes(&formula, &Formula::memberSettingChanged);
    node.attachSettingValueChangedSignals(&formula);
    first->setValue(1.0);
    EXPECT_EQ(changes.count(), 1);
    second->setValue(1.0);
    EXPECT_EQ(changes.count(), 2);

    int visited = 0;
    node.visitSettings([&](StructSetting* setting) {
        ++visited;
        EXPECT_TRUE(setting == first.get() || setting == second.get());
    });
    EXPECT_EQ(visited, 2);
}

TEST(FormulaNodeTest, AttachingAnUnknownNameDoesNothing)
{
    Formula formula("missing", nullptr);
    FormulaNodeVar node(nullptr, "missing");
    node.attachSettingValueChangedSignals(&formula);
    int unknownNames = 0;
    node.visitSettings([&](StructSetting* setting) { unknownNames += setting == nullptr; });
    EXPECT_EQ(unknownNames, 1);
}

TEST(FormulaNodeDeathTest, EvaluatingAnUnknownNameIsFatal)
{
    EXPECT_EXIT(FormulaNodeVar(nullptr, "missing").evaluate(), ::testing::KilledBySignal(SIGABRT),
                "ASSERT: .* in file CBGenerator/formulanode\\.cpp, line [0-9]+\n");
}
