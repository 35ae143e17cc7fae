#include "CBGenerator/schemacheck.h"

#include "CBGenerator/formula.h"
#include "support/schematext.h"
#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <csignal>

using HParser::SchemaCheck;
using HParser::StructSetting;
using HParser::StructSettings;
using SchemaText::member;
using SchemaText::NumLine;
using SchemaText::parsedStruct;
using SchemaText::utf8;
using ::testing::KilledBySignal;

namespace
{
void check(const QStringList& lines)
{
    sendStandardOutputToStandardError();
    const auto settings = parsedStruct(lines);
    settings->setDescriptiveName("Li Ion");
    SchemaCheck::checkFormulas(*settings);
}

/// Every word must be in the output before the end.
void expectRefusal(const QStringList& lines, const QStringList& words)
{
    for (const QString& word : words) {
        EXPECT_EXIT(check(lines), KilledBySignal(SIGABRT), utf8(word)) << utf8(lines.join('\n'));
    }
}

/// Each setting is named twice in one formula of the next.
QStringList doubleChain(int length)
{
    QStringList lines = {NumLine("s0")};
    for (int i = 1; i <= length; ++i) {
        const QString previous = QString("s%1").arg(i - 1);
        lines.append(NumLine(QString("s%1").arg(i)).bounds("0", previous + '+' + previous));
    }
    return lines;
}

/// Settings, each of which depends on the previous one by three formulas.
QStringList tripleChain(int length)
{
    QStringList lines = {NumLine("s0").label("Label s0")};
    for (int i = 1; i < length; ++i) {
        const QString name = QString("s%1").arg(i);
        const QString previous = QString("s%1").arg(i - 1);
        lines.append(
            NumLine(name).label("Label " + name).bounds(previous, previous).defaultValue(previous));
    }
    return lines;
}

QStringList conventionalLines()
{
    return {"char a; // bool, 1, \"active\", G, 0, hidden, basic",
            "char d; // bool, 1, \"default\", G, 0, hidden, basic",
            "char m; // bool, 1, \"modifiable\", G, 1, hidden, basic",
            "char t[9]; // string, auto, \"Title\", G, \"x\", 0, basic",
            "char s[9]; // string, auto, \"Subtitle\", G, \"x\", 1, basic"};
}

void checkConventions(const QStringList& lines)
{
    const auto settings = parsedStruct(lines)->deepCopy(); // with its visual order
    SchemaCheck::checkProfileConventions(*settings);
}
} // namespace

TEST(SchemaCheckTest, AcceptsFormulasThatFollowEachOtherInOneDirection)
{
    const auto settings = parsedStruct(
        {NumLine("a").bounds("0", "b + c"), NumLine("b").bounds("c", "c + 10").defaultValue("c"),
         NumLine("c").scale("0.1"), NumLine("d").bounds("a - b", "a + b + a").decimals("c / 100")});
    SchemaCheck::checkFormulas(*settings);
}

TEST(SchemaCheckTest, LeavesTheStructUntouched)
{
    const auto settings =
        parsedStruct({NumLine("a").defaultValue("7"), NumLine("b").bounds("0", "a")});
    SchemaCheck::checkFormulas(*settings);
    EXPECT_FALSE(member(*settings, "a")->lowerBound->hasTree());
    EXPECT_EQ(member(*settings, "a")->number(), 0);
}

TEST(SchemaCheckTest, EvaluatesNoVisualIndex)
{
    const auto settings =
        parsedStruct({NumLine("a").index("missing + ("), NumLine("b").index("b"), NumLine("c")});
    const StandardOutputCapture output;
    SchemaCheck::checkFormulas(*settings);
}

TEST(SchemaCheckTest, AcceptsUnknownKinds)
{
    SchemaCheck::checkFormulas(*parsedStruct({"char gap; // reserved, 0", NumLine("a")}));
}

TEST(SchemaCheckTest, AcceptsLongChains)
{
    QStringList lines = {NumLine("s0")};
    for (int i = 1; i < 500; ++i) {
        lines.append(NumLine(QString("s%1").arg(i)).bounds("0", QString("s%1").arg(i - 1)));
    }
    SchemaCheck::checkFormulas(*parsedStruct(lines));
}

TEST(SchemaCheckTest, AcceptsChainsThatNameASettingTwiceInOneFormula)
{
    SchemaCheck::checkFormulas(*parsedStruct(doubleChain(12))); // 2^13 - 1 changes
}

TEST(SchemaCheckTest, AcceptsChangesThatMultiplyALittle)
{
    SchemaCheck::checkFormulas(*parsedStruct(tripleChain(8)));
}

TEST(SchemaCheckTest, AcceptsAConventionalChemistry)
{
    checkConventions(conventionalLines());
}

TEST(SchemaCheckDeathTest, RefusesASettingThatFollowsItself)
{
    expectRefusal({NumLine("a").label("First").bounds("0", "a + 1")},
                  {"ASSERT: ", "loop", "First"});
}

TEST(SchemaCheckDeathTest, RefusesTwoSettingsThatFollowEachOther)
{
    expectRefusal({NumLine("a").label("First").bounds("0", "b"),
                   NumLine("b").label("Second").bounds("a", "100")},
                  {"ASSERT: ", "loop", "First", "Second"});
}

TEST(SchemaCheckDeathTest, RefusesALoopOfThree)
{
    expectRefusal({NumLine("z").label("Outside").bounds("0", "a"),
                   NumLine("a").label("First").bounds("0", "1 + c"),
                   NumLine("b").label("Second").scale("a"),
                   NumLine("c").label("Third").decimals("b * 0")},
                  {"ASSERT: ", "loop", "First", "Second", "Third"});
}

TEST(SchemaCheckDeathTest, RefusesALoopThroughEveryKindOfFormula)
{
    for (const NumLine& line :
         {NumLine("b").bounds("a", "100"), NumLine("b").bounds("0", "a"), NumLine("b").scale("a"),
          NumLine("b").decimals("a"), NumLine("b").defaultValue("a")}) {
        expectRefusal({NumLine("a").bounds("0", "b"), line}, {"loop"});
    }
}

TEST(SchemaCheckDeathTest, RefusesChangesThatMultiplyEndlessly)
{
    expectRefusal(tripleChain(30),
                  {"changes do not multiply endlessly", "Checking struct \"Li Ion\"",
                   "A change triggers more than 10000 others, that of \"Label s"});
}

TEST(SchemaCheckDeathTest, RefusesChangesThatMultiplyWithinTheFormulas)
{
    for (const int length : {13, 500}) { // 2^14 - 1 changes, and far more
        expectRefusal(doubleChain(length), {"changes do not multiply endlessly"});
    }
}

TEST(SchemaCheckDeathTest, RefusesUnknownNamesInEveryFormula)
{
    for (const NumLine& line :
         {NumLine("a").bounds("missing", "100"), NumLine("a").bounds("0", "missing"),
          NumLine("a").scale("missing"), NumLine("a").decimals("missing"),
          NumLine("a").defaultValue("missing")}) {
        expectRefusal({NumLine(line).label("Charge Current")},
                      {"ASSERT: ", "\"missing\"", "Charge Current"});
    }
}

TEST(SchemaCheckDeathTest, RefusesMalformedTextsInEveryFormula)
{
    for (const NumLine& line : {NumLine("a").bounds("1 +", "100"), NumLine("a").bounds("0", "1 +"),
                                NumLine("a").scale("1 +"), NumLine("a").decimals("1 +"),
                                NumLine("a").defaultValue("1 +")}) {
        expectRefusal({NumLine(line).label("Charge Current")},
                      {"ASSERT: ", "\"1 \\+\"", "Charge Current"});
    }
}

TEST(SchemaCheckDeathTest, RefusesANameThatIsHidden)
{
    expectRefusal({NumLine("a").index("none"), NumLine("b").label("Follower").bounds("0", "a * 2")},
                  {"ASSERT: ", "\"a \\* 2\"", "Follower", "Li Ion"});
}

TEST(SchemaCheckDeathTest, RefusesAChemistryWithoutItsFlags)
{
    for (const int flag : {0, 1, 2}) {
        QStringList lines = conventionalLines();
        lines.removeAt(flag);
        EXPECT_EXIT(checkConventions(lines), KilledBySignal(SIGABRT), "ASSERT: ") << flag;
        QStringList renamed = conventionalLines();
        renamed[flag].replace("active", "Active").replace("default\"", "Default\"");
        renamed[flag].replace("modifiable", "Modifiable");
        EXPECT_EXIT(checkConventions(renamed), KilledBySignal(SIGABRT), "ASSERT: ") << flag;
    }
}

TEST(SchemaCheckDeathTest, RefusesAChemistryWithoutTitleAndSubtitle)
{
    QStringList lines = conventionalLines();
    lines.removeLast();
    EXPECT_EXIT(checkConventions(lines), KilledBySignal(SIGABRT), "ASSERT: ");
}
