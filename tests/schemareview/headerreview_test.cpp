#include "support/reviewedheader.h"
#include "testpaths.h"

#include <gtest/gtest.h>

#include <QFile>

using HParser::HeaderReview;

using namespace ReviewedHeader;

TEST(HeaderReviewTest, FindsNothingInASoundHeader)
{
    EXPECT_EQ(reviewed(soundHeader), QStringList());
}

TEST(HeaderReviewTest, FindsNothingInTheDemo)
{
    QFile file(KELVARON_DEMO_DIR "/kelvaron_chemistries.cb");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(reviewed(QString::fromUtf8(file.readAll()).split('\n')), QStringList());
}

TEST(HeaderReviewTest, CountsLinesFromTheGivenOne)
{
    const Problems problems =
        HeaderReview::problems(with(Low, "\"Low\"", "\"Lo(w\"").join('\n'), 101);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_EQ(problems.first().line, 113);
}

TEST(HeaderReviewTest, FindsEveryProblemAtOnce)
{
    QStringList lines = with(Title, "\"Title\"", "\"Title (max)\"");
    replaceIn(lines, Active, "-1", "99");
    replaceIn(lines, Low, "0, 9", "0, hgh");
    replaceIn(lines, High, "low + 1", "low ** 1");
    const Problems found = problemsOf(lines);
    ASSERT_EQ(found.size(), 4) << reviewed(lines).join('\n');
    EXPECT_TRUE(isProblem(found.at(0), lines, at(Title, "\"Title"), "error "));
    EXPECT_TRUE(isProblem(found.at(1), lines, at(Active, "99"), "error "));
    EXPECT_TRUE(isProblem(found.at(2), lines, at(Low, "hgh"), "fatal "));
    EXPECT_TRUE(isProblem(found.at(3), lines, at(High, "* 1"), "fatal "));
}

// Names and XML tags

TEST(HeaderReviewTest, RefusesNamesThatMakeNoXmlTag)
{
    for (const QString name : {"Low (V)", "2nd Stage", "-Low", ".Low", "Low=", "", "a:b"}) {
        expectOnly(with(Low, "\"Low\"", '"' + name + '"'), at(Low, '"' + name + '"'), "error",
                   "not an XML tag");
    }
    expectProblem(with(Low, "\"Low\"", "\"Low (V)\""), at(Low, "\"Low ("), "error", "| \"Low V\"");
    expectProblem(with(Low, "\"Low\"", "\"2nd Stage\""), at(Low, "\"2nd"), "error",
                  "| \"Stage 2nd\"");
}

TEST(HeaderReviewTest, AcceptsNamesWhoseReservedCharactersAreReplaced)
{
    for (const QString name : {"Low <V> & %", "Low.1", "low-volt", "K\u00e4lte", "_low"}) {
        EXPECT_EQ(reviewed(with(Low, "\"Low\"", '"' + name + '"')), QStringList()) << name;
    }
}

TEST(HeaderReviewTest, RefusesTwoSettingsWithOneXmlTag)
{
    expectOnly(with(High, "\"High\"", "\"LOW\""), at(High, "\"LOW\""), "error",
               "same XML tag as line 13");
    QStringList lines = with(High, "\"High\"", "\"a/b\"");
    replaceIn(lines, Low, "\"Low\"", "\"A B\"");
    expectOnly(lines, at(High, "\"a/b\""), "error", "same XML tag as line 13");
    expectOnly(with(Low, "\"Low\"", "\"Chemistry\""), at(Low, "\"Chem"), "error",
               "the profile's chemistry");
}

TEST(HeaderReviewTest, RefusesTwoMembersOfOneCName)
{
    expectProblem(with(High, "high;", "low;"), at(High, 15), "error", "used in line 13");
}

TEST(HeaderReviewTest, RefusesTwoChemistriesOfOneName)
{
    QStringList lines = soundHeader + soundHeader.mid(Cell - 1);
    replaceIn(lines, CellEnd + 2, "2, 2,", "3, 3,");
    replaceIn(lines, CellEnd + 2, "2, -1", "3, -1");
    expectOnly(lines, at(CellEnd + 1, 1), "error", "the chemistry \"Cell\" is already in line 6");
}

// Places

TEST(HeaderReviewTest, RefusesPlacesThatAreLost)
{
    expectOnly(with(Mode, "\"Off\", 4", "\"Off\", 10"), at(Mode, "10"), "error",
               "the struct has 10 members");
    expectOnly(with(Mode, "\"Off\", 4", "\"Off\", 1.5"), at(Mode, "1.5"), "error",
               "not a whole number");
    expectOnly(with(Mode, "\"Off\", 4", "\"Off\", -1.5"), at(Mode, "-1.5"), "error",
               "not a whole number");
    expectOnly(with(Mode, "\"Off\", 4", "\"Off\", last"), at(Mode, "last"), "error",
               "not a whole number");
}

TEST(HeaderReviewTest, RefusesAPlaceThatIsTaken)
{
    expectOnly(with(Mode, "\"Off\", 4", "\"Off\", 3"), at(Mode, "3, \"On"), "error",
               "already used by \"High\" in line 14");
}

TEST(HeaderReviewTest, AcceptsGapsAndHiddenSettings)
{
    EXPECT_EQ(reviewed(with(Mode, "\"Off\", 4", "\"Off\", 9")), QStringList());
    EXPECT_EQ(reviewed(with(Mode, "\"Off\", 4", "\"Off\", -1")), QStringList());
}

// Special settings

TEST(HeaderReviewTest, RefusesAChemistryWithoutItsFlags)
{
    expectProblem(without(Active), at(Cell, 1), "fatal \"Cell\" has no setting \"active\"",
                  "| unsigned char active; // bool, 1, \"active\"");
    expectProblem(without(Default), at(Cell, 1), "fatal \"Cell\" has no setting \"default\"");
    expectProblem(without(Modifiable), at(Cell, 1), "fatal \"Cell\" has no setting \"modifiable\"");
    expectProblem(with(Active, "\"active\"", "\"Active\""), at(Active, "\"Active"), "fatal",
                  "| \"active\"");
}

TEST(HeaderReviewTest, RefusesAFlagThatIsNoBool)
{
    expectProblem(with(Active, "bool, 1, \"active\", A, 0, -1, basic",
                       "num, 1, 0, 1, x1, 0, \"active\", \"\", A, 0, -1, basic"),
                  at(Active, "num"), "fatal", "must be a bool");
}

TEST(HeaderReviewTest, SaysNothingOfAFlagWhoseLineIsBroken)
{
    expectOnly(with(Active, ", -1, basic", ""), at(Active), "fatal 5 fields where a bool has 7");
}

TEST(HeaderReviewTest, RefusesAChemistryThatShowsFewerThanTwoSettings)
{
    QStringList lines = soundHeader;
    replaceIn(lines, Title, "\"one\", 0", "\"one\", -1");
    lines[Low - 1] = lines[High - 1] = lines[Mode - 1] = QString();
    expectOnly(lines, at(Cell, 1), "fatal", "shows 1 settings");
}

TEST(HeaderReviewTest, WantsATypeFirst)
{
    QStringList empty = soundHeader;
    empty[GlobalType - 1] = empty[GlobalSum - 1] = QString();
    expectProblem(empty, at(Global, 1), "fatal", "\"Global\" has no members");
    expectProblem(without(Type), at(Title, "\"Title"), "fatal",
                  "the first member of a struct must be its \"type\"");
    expectProblem(with(Low, "\"Low\"", "\"type\""), at(Low, "\"type"), "fatal",
                  "only the first member");
    expectProblem(with(Type, "unsigned char", "short"), at(Type, "num"), "fatal", "one byte");
    expectProblem(with(Type, "num, auto", "num, 4"), at(Type, "num"), "fatal", "one byte");
    expectOnly(
        with(Type, "2, 2, x1, 0, \"type\", \"\", A, 2", "255, 255, x1, 0, \"type\", \"\", A, 255"),
        at(Type), "error 255 is not a type");
    expectOnly(with(Type, "2, 2, x1, 0, \"type\", \"\", A, 2", "1, 1, x1, 0, \"type\", \"\", A, 1"),
               at(Type, "1, -1"), "error", "the struct in line 2 also has the type 1");
}

TEST(HeaderReviewTest, WarnsOfAMissingChecksum)
{
    expectOnly(without(Sum), at(Cell, 1), "warning", "damage goes unnoticed");
    expectOnly(with(Sum, "x1", "x2"), at(Sum), "error", "scale factor 1");
    expectOnly(with(Sum, "unsigned char", "short"), at(Sum), "error", "one byte");
}

// Formulas

TEST(HeaderReviewTest, NamesUnknownVariablesAndTheNearestOnes)
{
    expectOnly(with(High, "low + 1", "lw + 1"), at(High, "lw"), "fatal no setting is called \"lw\"",
               "| low");
    expectOnly(with(High, "low + 1", "1 + voltage * 2"), at(High, "voltage"), "fatal",
               "\"voltage\"");
    expectOnly(with(High, "low + 1", "Low"), at(High, "Low"), "fatal", "| low");
}

TEST(HeaderReviewTest, RefusesFormulasThatNameHiddenSettings)
{
    expectOnly(with(High, "low + 1", "sum + 1"), at(High, "sum"), "fatal", "\"sum\" is not shown");
}

TEST(HeaderReviewTest, WarnsOfFormulasThatNameTexts)
{
    expectProblem(with(High, "low + 1", "low + title"), at(High, "title"), "warning",
                  "\"title\" is not a num");
}

TEST(HeaderReviewTest, RefusesLoopsOfFormulas)
{
    const QStringList lines = with(Low, "0, 9", "0, high");
    const QString loop = "loop: \"Low\" -> \"High\" -> \"Low\"";
    expectProblem(lines, at(High, "low, 9"), "fatal", loop);
    expectProblem(lines, at(High, "low + 1"), "fatal", loop);
    EXPECT_EQ(reviewed(lines).size(), 2);
    expectOnly(with(Low, "0, 9", "0, low"), at(Low, "low, x"), "fatal", "loop: \"Low\" -> \"Low\"");
    expectProblem(with(Low, "0, 9", "0, low"), at(Low, "low, x"), "fatal",
                  "| a formula without \"low\"");
}

TEST(HeaderReviewTest, FindsEveryLoop)
{
    QStringList lines = with(Low, "0, 9", "0, low");
    replaceIn(lines, High, "low, 9", "low, high");
    const Problems found = problemsOf(lines);
    ASSERT_EQ(found.size(), 2) << reviewed(lines).join('\n');
    EXPECT_TRUE(isProblem(found.at(0), lines, at(Low, "low, x"), "fatal"));
    EXPECT_TRUE(isProblem(found.at(1), lines, at(High, "high, x"), "fatal"));
}

TEST(HeaderReviewTest, RefusesChangesThatMultiply)
{
    QStringList lines = soundHeader;
    for (int i = 0; i < 12; ++i) {
        const QString previous = i == 0 ? QString("low") : QString("s%1").arg(i - 1);
        lines.insert(High + i, QString("unsigned char s%1; // num, auto, %2, %2, x1, 0, \"S%1\", "
                                       "\"\", A, %2, %3, basic")
                                   .arg(i)
                                   .arg(previous)
                                   .arg(5 + i));
    }
    // 3^0 + ... + 3^9 changes of what follows the third, but fewer than 10000 of what follows the fourth
    expectOnly(lines, at(High + 3, "s2"),
               "fatal a change of \"S2\" triggers more than 10000 others");
}

// Lines that cannot be parsed

TEST(HeaderReviewTest, RefusesLinesWithTooFewFields)
{
    expectOnly(with(Low, ", 2, basic", ""), at(Low), "fatal 10 fields where a num has 12");
    expectProblem(with(Mode, ", 4, \"On\", \"Off\", basic", ""), at(Mode),
                  "fatal 5 fields where a list has 7");
    expectProblem(with(Low, "; // num", "; // number"), at(Low, "number"), "fatal",
                  "\"number\" is not a kind");
    expectProblem(with(Low, "unsigned char low; ", ""), at(Low, 1), "fatal", "a comment line");
    expectProblem(with(Low, soundHeader.at(Low - 1), "; // num"), at(Low, 1), "fatal",
                  "a type and a name");
    expectProblem(with(Low, soundHeader.at(Low - 1), "unsigned char low;"), at(Low, 19), "fatal",
                  "description");
}

TEST(HeaderReviewTest, NamesACommaInsideQuotes)
{
    expectOnly(with(Low, "\"Low\"", "\"Low, V\""), at(Low, ", V\""), "fatal",
               "a comma splits \"Low V\": 13 fields where a num has 12 | \"Low V\"");
    expectOnly(with(Low, " \"V\"", ""), at(Low, ", A"), "fatal",
               "an empty field is skipped, all fields after it move up: 11 fields where");
}

TEST(HeaderReviewTest, NamesFieldsWithoutQuotes)
{
    expectOnly(with(Low, "\"V\"", "mV"), at(Low, "mV"), "error the units loses", "| \"mV\"");
    expectProblem(with(Title, "\"one\"", "one"), at(Title, "one"), "error the default loses",
                  "| \"one\"");
}

TEST(HeaderReviewTest, RefusesCommentsInsideAStruct)
{
    expectOnly(withAnother(Low, "  // volts"), at(Low, 3), "fatal",
               "a comment line inside a struct");
}

TEST(HeaderReviewTest, RefusesAStructThatIsNotClosedByABraceAlone)
{
    expectOnly(with(GlobalEnd, "}", "};"), at(GlobalEnd, 1), "fatal \"};\" does not close a struct",
               "| }");
    expectOnly(without(GlobalEnd), at(Cell, 1), "fatal \"Global\" is not closed before this line");
    expectOnly(without(CellEnd), at(CellEnd + 1, 0), "warning \"Cell\" is not closed");
}

TEST(HeaderReviewTest, FindsStructHeadersThatOpenNothing)
{
    expectOnly(with(Cell, "\"Cell\"", "\"Li-Ion\""), at(Cell, "-"), "fatal",
               "its members are ignored");
    expectOnly(with(Global, "global", "Global"), at(Global, 41), "fatal", "| global");
    EXPECT_EQ(reviewed(withAnother(Address, "// struct Cell comes below")), QStringList());
}

TEST(HeaderReviewTest, NamesGlobalStructsThatAreDropped)
{
    expectProblem(soundHeader + soundHeader.mid(Global - 1, GlobalEnd - Global + 1), at(Global, 1),
                  "error", "those in line 18 are used");
}

TEST(HeaderReviewTest, WantsAStartAddress)
{
    expectOnly(without(Address), at(Address, 0), "fatal", "the profile start address is missing");
    expectOnly(with(Address, "0x400", "four"), at(Address, "four"), "fatal",
               "\"four\" is not an address");
    expectOnly(with(Address, "0x400", "0x17C01"), at(Address, "0x17"), "error",
               "outside the charger's flash");
    EXPECT_EQ(reviewed(with(Address, "0x400", "0x17C00")), QStringList());
    EXPECT_EQ(reviewed(with(Address, "#define", " # define")), QStringList());
}

TEST(HeaderReviewTest, TakesAnEmptyTextForAHeaderWithNothingInIt)
{
    EXPECT_EQ(reviewed({}).size(), 3);
}
