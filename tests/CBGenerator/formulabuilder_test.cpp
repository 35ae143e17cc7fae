#include "CBGenerator/formulabuilder.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include <unistd.h>

using HParser::Formula;
using HParser::FormulaBuilder;
using HParser::FormulaNode;
using HParser::FormulaNodeVar;
using HParser::StructSetting;
using SchemaText::liveSetting;
using SchemaText::NumLine;
using SchemaText::utf8;

namespace
{
struct Example
{
    const char* text;
    double value;
};

class FormulaBuilderValueTest : public ::testing::TestWithParam<Example>
{};

class FormulaBuilderMalformedTest : public ::testing::TestWithParam<const char*>
{};

/// Ends the process successfully if building the tree succeeds or fails within a minute, even with
/// sanitizers.
void buildQuickly(const QString& text)
{
    alarm(60);
    const auto setting = liveSetting(NumLine("a"));
    FormulaBuilder({setting.get()}).buildTree(text);
    std::_Exit(0);
}
} // namespace

TEST_P(FormulaBuilderValueTest, Evaluates)
{
    const auto maxCurrent = liveSetting(NumLine("maxCurrent"));
    maxCurrent->setValue(5.0);
    const auto underscored = liveSetting(NumLine("x_2"));
    underscored->setValue(8.0);
    const FormulaBuilder builder({maxCurrent.get(), underscored.get()});
    const StandardOutputCapture output;
    const auto tree = builder.buildTree(QString(GetParam().text));
    ASSERT_NE(tree, nullptr) << GetParam().text;
    EXPECT_DOUBLE_EQ(tree->evaluate(), GetParam().value) << GetParam().text;
    EXPECT_EQ(output.text(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Formulas, FormulaBuilderValueTest,
    ::testing::Values(Example{"maxCurrent * 2 + 1", 11}, Example{"2 + maxCurrent * 2", 12},
                      Example{"10 - 4 - 3", 3}, Example{"24 / 4 / 2", 3}, Example{"10 - 4 + 3", 9},
                      Example{"24 / 4 * 2", 12}, Example{"2 * 6 / 4", 3}, Example{"2*12/4*5", 30},
                      Example{"24/4*2/3", 4}, Example{"9-4+3-2+1", 7}, Example{"(1+2)*3", 9},
                      Example{"3*(1+2)", 9}, Example{"(1+2)", 3}, Example{"(1+2)*(3+4)", 21},
                      Example{"((1+2)*(3+4))", 21}, Example{"10 - (4 - 3)", 9},
                      Example{"24 / (4 / 2)", 12}, Example{"((1+2)*3-1)/(2*2)", 2},
                      Example{"-5", -5}, Example{"+5", 5}, Example{"2*-3", -6}, Example{"2--3", 5},
                      Example{"2+-3", -1}, Example{"2-+3", -1}, Example{"-2-3", -5},
                      Example{"-2*-3-1", 5}, Example{"4.2", 4.2}, Example{"0.25*4", 1},
                      Example{"007", 7}, Example{"maxCurrent", 5}, Example{"(maxCurrent)", 5},
                      Example{"maxCurrent-1", 4}, Example{"maxCurrent - 1", 4}, Example{"x_2/4", 2},
                      Example{"maxCurrent-x_2", -3}, Example{"1+2*3-4/2", 5},
                      Example{"1-2*-3+4", 11}, Example{"\t1 0 +\n2 ", 12},
                      Example{"max Current * 2", 10}, Example{"6/3*maxCurrent", 10}));

TEST_P(FormulaBuilderMalformedTest, GivesNoTreeAndSaysSo)
{
    const StandardOutputCapture output;
    const auto tree = FormulaBuilder({}).buildTree(QString(GetParam()));
    EXPECT_EQ(tree, nullptr) << GetParam();
    EXPECT_EQ(output.text().find("Failed to match!\n"), 0U) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(Texts, FormulaBuilderMalformedTest,
                         ::testing::Values("", "   ", "()", "5+", "5 + )", "a+-b", "-a", "*5", "+",
                                           "--5", "(1+2", ")1(", "1++", "@", ".5", "5.", "_x",
                                           "-(3)", "(1)(2)", "1+*2", "2*(3", "1 + \"a\""));

TEST(FormulaBuilderTest, UnknownOperatorGivesNoUsableTree)
{
    for (const char* text : {"5 % 3", "1e5", "1,5", "5 ^ 2"}) {
        const auto tree = FormulaBuilder({}).buildTree(QString(text));
        EXPECT_EQ(tree, nullptr) << text;
    }
}

TEST(FormulaBuilderTest, NodesTellTheirTypes)
{
    const auto setting = liveSetting(NumLine("a"));
    const FormulaBuilder builder({setting.get()});
    EXPECT_EQ(utf8(builder.buildTree("4.5")->getFormulaNodeType()), "Num");
    EXPECT_EQ(utf8(builder.buildTree("a")->getFormulaNodeType()), "NodeVar");
    EXPECT_EQ(utf8(builder.buildTree("a+1")->getFormulaNodeType()), "MathOp");
}

TEST(FormulaBuilderTest, UnknownNameGivesANodeWithoutSetting)
{
    const auto setting = liveSetting(NumLine("current"));
    for (const char* text : {"missing", "Current", "curren", "current2"}) {
        const auto tree = FormulaBuilder({setting.get()}).buildTree(QString(text));
        const auto* node = qobject_cast<FormulaNodeVar*>(tree.get());
        ASSERT_NE(node, nullptr) << text;
        EXPECT_EQ(node->setting, nullptr) << text;
    }
}

TEST(FormulaBuilderTest, DropsOneOuterPairOfParenthesesOnly)
{
    for (const char* text : {"((4))", "(((4)))"}) {
        const auto tree = FormulaBuilder({}).buildTree(QString(text));
        const auto* node = qobject_cast<FormulaNodeVar*>(tree.get());
        ASSERT_NE(node, nullptr) << text;
        EXPECT_EQ(node->setting, nullptr) << text;
    }
    const auto tree = FormulaBuilder({}).buildTree("(4)");
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->evaluate(), 4);
}

TEST(FormulaBuilderTest, NameMayBeginLikeAFunction)
{
    const auto setting = liveSetting(NumLine("e1"));
    setting->setValue(6.0);
    const auto tree = FormulaBuilder({setting.get()}).buildTree("e1 * 2");
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->evaluate(), 12);
}

TEST(FormulaBuilderTest, FindsTheFirstSettingOfExactlyThatName)
{
    const StructSetting first(NumLine("a"), nullptr);
    StructSetting second(NumLine("b").label("first b"), nullptr);
    StructSetting third(NumLine("b").label("second b"), nullptr);
    const QList<StructSetting*> settings = {&second, &third};
    EXPECT_EQ(Formula::getSettingByVariableName(settings, "b"), &second);
    EXPECT_EQ(Formula::getSettingByVariableName(settings, "B"), nullptr);
    EXPECT_EQ(Formula::getSettingByVariableName(settings, "a"), nullptr);
    EXPECT_EQ(Formula::getSettingByVariableName({}, "a"), nullptr);
}

TEST(FormulaBuilderTest, CapturesGroupsByCountingBrackets)
{
    EXPECT_EQ(utf8(Formula::captureStuffInParentheses("(1+2)*3", 0)), "(1+2)");
    EXPECT_EQ(utf8(Formula::captureStuffInParentheses("2*(1+(2-3))*(4)", 2)), "(1+(2-3))");
    EXPECT_EQ(utf8(Formula::captureStuffInParentheses("()", 0)), "()");
}

TEST(FormulaBuilderTest, ManyOperandsKeepTheirOrder)
{
    QString text = "1000";
    for (int i = 0; i < 200; ++i) {
        text += " - 2 * 2";
    }
    const auto tree = FormulaBuilder({}).buildTree(text);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->evaluate(), 200);
}

TEST(FormulaBuilderTest, LongSumsAreFormulasToo)
{
    const auto tree = FormulaBuilder({}).buildTree(QString("1+").repeated(1000) + '1');
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->evaluate(), 1001);
}

TEST(FormulaBuilderTest, HasFifteenHundredOperatorsOfARank)
{
    for (const char* piece : {"1+", "1-", "1*", "1/"}) {
        EXPECT_NE(FormulaBuilder({}).buildTree(QString(piece).repeated(1500) + '1'), nullptr);
        EXPECT_EQ(FormulaBuilder({}).buildTree(QString(piece).repeated(1501) + '1'), nullptr);
    }
}

TEST(FormulaBuilderTest, HasSevenHundredAndFiftyGroupsInEachOther)
{
    const auto nested = [](int depth) {
        return QString("1+(").repeated(depth) + '1' + QString(depth, ')');
    };
    const auto tree = FormulaBuilder({}).buildTree(nested(750));
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->evaluate(), 751);
    EXPECT_EQ(FormulaBuilder({}).buildTree(nested(751)), nullptr);
}

TEST(FormulaBuilderDeathTest, ThousandsOfOperatorsEndQuickly)
{
    for (const char* piece : {"1+", "a+", "a*", "a%"}) {
        const QString text = QString(piece).repeated(100000) + '1';
        EXPECT_EXIT(buildQuickly(text), ::testing::ExitedWithCode(0), "") << piece;
    }
}

TEST(FormulaBuilderDeathTest, ThousandsOfParenthesesEndQuickly)
{
    constexpr int depth = 10000;
    const QString closing(depth, ')');
    for (const QString& text :
         {QString(depth, '(') + '1' + closing, QString(depth, '('), QString(depth, '(') + '1',
          QString("(1+").repeated(depth) + '1' + closing,
          QString("1+(").repeated(depth) + '1' + closing, QString("(a)").repeated(depth)}) {
        EXPECT_EXIT(buildQuickly(text), ::testing::ExitedWithCode(0), "") << utf8(text.left(9));
    }
}

TEST(FormulaBuilderDeathTest, ThousandsOfGroupsEndQuickly)
{
    const QString text = QString("(a)-").repeated(100000) + '1';
    EXPECT_EXIT(buildQuickly(text), ::testing::ExitedWithCode(0), "");
}
