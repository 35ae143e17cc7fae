#include "schemareview/formulasyntaxreview.h"

#include "CBGenerator/formula.h"
#include "base/linecapture.h"
#include "support/schematext.h"

#include <gtest/gtest.h>

#include <random>

using HParser::Formula;
using HParser::FormulaSyntaxReview;
using SchemaText::NumLine;

namespace
{
const QStringList names = {"a", "bc", "D2"};

FormulaSyntaxReview::Fault judge(const QString& name)
{
    return names.contains(name) ? FormulaSyntaxReview::Fault()
                                : FormulaSyntaxReview::Fault{0, name, {}, false};
}

QList<FormulaSyntaxReview::Fault> faults(const QString& text)
{
    return FormulaSyntaxReview::faults(text, judge);
}

/// Returns whether the editor could evaluate the formula.
bool canBeEvaluated(const QString& text)
{
    static const auto settings =
        SchemaText::liveStruct({NumLine("a"), NumLine("bc"), NumLine("D2")});
    const LineCapture traces;
    Formula formula(text, nullptr);
    formula.buildFormulaTree(settings->getStructSettings());
    bool isKnown = formula.hasTree();
    formula.visitSettings(
        [&isKnown](const HParser::StructSetting* named) { isKnown = isKnown && named != nullptr; });
    return isKnown;
}

void expectFault(const QString& text, int position, const QString& part)
{
    const QList<FormulaSyntaxReview::Fault> found = faults(text);
    ASSERT_EQ(found.size(), 1) << qPrintable(text);
    EXPECT_EQ(found.first().position, position) << qPrintable(text);
    EXPECT_TRUE(found.first().text.contains(part)) << qPrintable(found.first().text);
    EXPECT_FALSE(canBeEvaluated(text)) << qPrintable(text);
}
} // namespace

TEST(FormulaSyntaxReviewTest, AcceptsTheGrammar)
{
    for (const QString text :
         {"4.2", "-5", "2*-3", "a", "a * 2 + 1", "(1+2)*3", "(1 + 2)", "((a)+(bc))", "a+-5", "- 5",
          "D 2", "10 - 4 - 3", "(a + 0.1) * bc / (D2 - 1)"}) {
        EXPECT_TRUE(faults(text).isEmpty()) << qPrintable(text);
        EXPECT_TRUE(canBeEvaluated(text)) << qPrintable(text);
    }
}

TEST(FormulaSyntaxReviewTest, PointsAtTheFault)
{
    expectFault("", 0, "empty");
    expectFault("  ", 2, "empty");
    expectFault("a +", 3, "missing");
    expectFault("a + -bc", 4, "a sign");
    expectFault(" -(a)", 1, "a sign");
    expectFault(".5", 0, "a point");
    expectFault("1.5e3", 3, "not an operator");
    expectFault("a ^ 2", 2, "not an operator");
    expectFault("2 * (a + 1", 4, "never closed");
    expectFault("a)", 1, "closes nothing");
    expectFault("()", 1, "missing");
    expectFault("((a))", 1, "doubled");
    expectFault("2 * ((a + 1))", 5, "doubled");
    expectFault("a + #", 4, "starts neither a number");
}

TEST(FormulaSyntaxReviewTest, AsksForEveryName)
{
    const QList<FormulaSyntaxReview::Fault> found = faults("x + a * (y - 1)");
    ASSERT_EQ(found.size(), 2);
    EXPECT_EQ(found.at(0).text, "x");
    EXPECT_EQ(found.at(0).position, 0);
    EXPECT_EQ(found.at(1).text, "y");
    EXPECT_EQ(found.at(1).position, 9);
}

TEST(FormulaSyntaxReviewTest, RefusesWhatIsTooLongOrTooDeep)
{
    EXPECT_EQ(faults(QString("a+").repeated(1001) + "a").size(), 1);
    EXPECT_TRUE(faults(QString("a+").repeated(1000) + "a").isEmpty());
    EXPECT_EQ(faults(QString("(1+").repeated(401) + "a" + QString(")").repeated(401)).size(), 1);
    EXPECT_TRUE(faults(QString("(1+").repeated(400) + "a" + QString(")").repeated(400)).isEmpty());
}

TEST(FormulaSyntaxReviewTest, AgreesWithTheEditorOnAnyText)
{
    static const QString characters = "aabbcD2109.+-*/(()) ^e#_";
    std::mt19937 random(20261121);
    int sound = 0;
    for (int i = 0; i < 20000; ++i) {
        QString text;
        const auto length = random() % 9U;
        for (auto left = length; left > 0; --left) {
            text += characters.at(static_cast<int>(random() % 24U));
        }
        ASSERT_EQ(faults(text).isEmpty(), canBeEvaluated(text)) << qPrintable(text);
        sound += faults(text).isEmpty() ? 1 : 0;
    }
    EXPECT_GT(sound, 500); // both answers occur
}
