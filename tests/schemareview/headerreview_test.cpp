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
        HeaderReview::problems(with(13, "\"Low\"", "\"Lo(w\"").join('\n'), 101);
    ASSERT_EQ(problems.size(), 1);
    EXPECT_EQ(problems.first().line, 113);
}

TEST(HeaderReviewTest, FindsEveryProblemAtOnce)
{
    QStringList lines = with(8, "\"Title\"", "\"Title (max)\"");
    lines[9] = lines[9].replace("-1", "99");
    lines[12] = lines[12].replace("0, 9", "0, hgh");
    lines[13] = lines[13].replace("low + 1", "low ** 1");
    const QStringList found = reviewed(lines);
    ASSERT_EQ(found.size(), 4) << qPrintable(found.join('\n'));
    EXPECT_TRUE(found.at(0).startsWith(withColumn(lines, "8@\"Title@ error ")));
    EXPECT_TRUE(found.at(1).startsWith(withColumn(lines, "10@99@ error ")));
    EXPECT_TRUE(found.at(2).startsWith(withColumn(lines, "13@hgh@ fatal ")));
    EXPECT_TRUE(found.at(3).startsWith(withColumn(lines, "14@* 1@ fatal ")));
}

// Names and XML tags

TEST(HeaderReviewTest, RefusesNamesThatMakeNoXmlTag)
{
    for (const QString name : {"Low (V)", "2nd Stage", "-Low", ".Low", "Low=", "", "a:b"}) {
        expectOnly(with(13, "\"Low\"", '"' + name + '"'), "13@\"" + name + "\"@ error",
                   "not an XML tag");
    }
    expectProblem(with(13, "\"Low\"", "\"Low (V)\""), "13@\"Low (@", "| \"Low V\"");
    expectProblem(with(13, "\"Low\"", "\"2nd Stage\""), "13@\"2nd@", "| \"Stage 2nd\"");
}

TEST(HeaderReviewTest, AcceptsNamesWhoseReservedCharactersAreReplaced)
{
    for (const QString name : {"Low <V> & %", "Low.1", "low-volt", "K\u00e4lte", "_low"}) {
        EXPECT_EQ(reviewed(with(13, "\"Low\"", '"' + name + '"')), QStringList())
            << qPrintable(name);
    }
}

TEST(HeaderReviewTest, RefusesTwoSettingsWithOneXmlTag)
{
    expectOnly(with(14, "\"High\"", "\"LOW\""), "14@\"LOW\"@ error", "same XML tag as line 13");
    QStringList lines = with(14, "\"High\"", "\"a/b\"");
    lines[12].replace("\"Low\"", "\"A B\"");
    expectOnly(lines, "14@\"a/b\"@ error", "same XML tag as line 13");
    expectOnly(with(13, "\"Low\"", "\"Chemistry\""), "13@\"Chem@ error", "the profile's chemistry");
}

TEST(HeaderReviewTest, RefusesTwoMembersOfOneCName)
{
    expectProblem(with(14, "high;", "low;"), "14:15 error", "used in line 13");
}

TEST(HeaderReviewTest, RefusesTwoChemistriesOfOneName)
{
    QStringList lines = soundHeader + soundHeader.mid(5);
    lines[18].replace("2, 2,", "3, 3,").replace("2, -1", "3, -1");
    expectOnly(lines, "18:1 error", "the chemistry \"Cell\" is already in line 6");
}

// Places

TEST(HeaderReviewTest, RefusesPlacesThatAreLost)
{
    expectOnly(with(15, "\"Off\", 4", "\"Off\", 10"), "15@10@ error", "the struct has 10 members");
    expectOnly(with(15, "\"Off\", 4", "\"Off\", 1.5"), "15@1.5@ error", "not a whole number");
    expectOnly(with(15, "\"Off\", 4", "\"Off\", -1.5"), "15@-1.5@ error", "not a whole number");
    expectOnly(with(15, "\"Off\", 4", "\"Off\", last"), "15@last@ error", "not a whole number");
}

TEST(HeaderReviewTest, RefusesAPlaceThatIsTaken)
{
    expectOnly(with(15, "\"Off\", 4", "\"Off\", 3"), "15@3, \"On@ error",
               "already used by \"High\" in line 14");
}

TEST(HeaderReviewTest, AcceptsGapsAndHiddenSettings)
{
    EXPECT_EQ(reviewed(with(15, "\"Off\", 4", "\"Off\", 9")), QStringList());
    EXPECT_EQ(reviewed(with(15, "\"Off\", 4", "\"Off\", -1")), QStringList());
}

// Bits and sizes

TEST(HeaderReviewTest, RefusesBitFieldsThatDoNotAddUp)
{
    expectOnly(with(12, "bool, 6", "bool, 5"), "13@auto@ fatal", "have 7 bits");
    expectProblem(with(12, "bool, 6", "bool, 5"), "13@auto@",
                  "from line 10 on have 7 bits, not whole bytes, before this member | "
                  "fields of 1 more bit, or of 7 fewer");
    QStringList lines = with(12, "bool, 6", "bool, 5");
    lines.move(11, 15);
    lines[11] = lines[11]; // the flag is now after the checksum
    expectProblem(lines, "12@auto@ fatal", "have 2 bits");
    expectProblem(lines, "6:1 fatal", "have 5 bits");
}

TEST(HeaderReviewTest, RefusesAChecksumInsideAByte)
{
    expectProblem(withAnother(16, "char b; // bool, 3, \"B\", A, 0, -1, basic"), "17@auto@ fatal",
                  "have 3 bits");
}

TEST(HeaderReviewTest, RefusesAChecksumOfABitField)
{
    expectOnly(with(16, "num, auto", "num, 3"), "16@num, 3@ fatal", "a number of one byte");
}

TEST(HeaderReviewTest, RefusesAChecksumAmongBitFieldsThatAddUpWithIt)
{
    QStringList lines = with(16, "num, auto", "num, 8");
    EXPECT_EQ(reviewed(lines), QStringList());
    lines.insert(16, "char c; // bool, 5, \"C\", A, 0, -1, basic");
    lines.insert(15, "char b; // bool, 3, \"B\", A, 0, -1, basic");
    expectProblem(lines, "17@8, 0@ fatal", "have 3 bits");
    expectProblem(lines, "6:1 fatal", "have 5 bits");
}

TEST(HeaderReviewTest, RefusesUnusableSizes)
{
    expectProblem(with(13, "num, auto", "num, 9"), "13@9, 0@ fatal", "9 bits do not fit");
    expectProblem(with(13, "num, auto", "num, full"), "13@full@ fatal", "\"full\" is not a size");
    expectProblem(with(13, "num, auto", "num, -8"), "13@-8@ fatal", "is not a size");
    expectProblem(with(13, "num, auto", "num, 99999999999"), "13@99999@ fatal", "do not fit");
    expectProblem(with(12, "bool, 6", "bool, 14"), "12@14@ fatal",
                  "14 bits do not fit into a bool");
    expectProblem(with(8, "string, auto", "string, 64"), "8@64@ fatal", "cannot be a bit field");
}

TEST(HeaderReviewTest, RefusesStructsTooLargeForAnImage)
{
    expectOnly(with(8, "title[8]", "title[760]"), "6:1 error", "\"Cell\" takes 1040 of the 2048");
    EXPECT_EQ(reviewed(with(8, "title[8]", "title[740]")), QStringList());
    expectOnly(with(4, "unsigned char sum",
                    "char x[2000]; // string, auto, \"X\", A, \"\", 0, basic\nunsigned char sum"),
               "2:1 error", "\"Global\" takes");
}

TEST(HeaderReviewTest, RefusesTypesThatTheChargerDoesNotHave)
{
    expectOnly(with(13, "unsigned char", "float"), "13:1 fatal", "\"float\" is not a type");
    expectOnly(with(10, "unsigned char", "bool"), "10:1 error", "\"bool\" is not a type");
    expectOnly(with(8, "char", "short"), "8:1 error", "single bytes");
}

TEST(HeaderReviewTest, RefusesABoolThatIsReadInMoreBytesThanItIsStoredIn)
{
    expectProblem(withAnother(13, "short b; // bool, auto, \"B\", A, 0, -1, basic"), "13:1 error",
                  "stored in one byte and read in 2");
}

TEST(HeaderReviewTest, RefusesArraysThatAreNone)
{
    expectOnly(with(8, "title[8]", "title[ 8 ]"), "8@]@ error", "blanks in the brackets");
    expectOnly(with(13, "low;", "low2[ 1 ] low;"), "13@low;@ fatal", "blanks in the brackets");
    expectOnly(with(8, "title[8]", "title[LEN]"), "8:6 error", "without a size in digits");
    expectOnly(with(8, "title[8]", "title"), "8:6 error", "needs an array");
    expectOnly(with(13, "low;", "low[2];"), "13:15 error", "cannot be an array");
}

// Special settings

TEST(HeaderReviewTest, RefusesAChemistryWithoutItsFlags)
{
    expectProblem(without(10), "6:1 fatal \"Cell\" has no setting \"active\"",
                  "| unsigned char active; // bool, 1, \"active\"");
    expectProblem(without(11), "6:1 fatal \"Cell\" has no setting \"default\"");
    expectProblem(without(12), "6:1 fatal \"Cell\" has no setting \"modifiable\"");
    expectProblem(with(10, "\"active\"", "\"Active\""), "10@\"Active@ fatal", "| \"active\"");
}

TEST(HeaderReviewTest, RefusesAFlagThatIsNoBool)
{
    expectProblem(with(10, "bool, 1, \"active\", A, 0, -1, basic",
                       "num, 1, 0, 1, x1, 0, \"active\", \"\", A, 0, -1, basic"),
                  "10@num@ fatal", "must be a bool");
}

TEST(HeaderReviewTest, SaysNothingOfAFlagWhoseLineIsBroken)
{
    expectOnly(with(10, ", -1, basic", ""), "10:", "5 fields where a bool has 7");
}

TEST(HeaderReviewTest, RefusesAChemistryThatShowsFewerThanTwoSettings)
{
    QStringList lines = soundHeader;
    lines[7].replace("\"one\", 0", "\"one\", -1");
    lines[12] = lines[13] = lines[14] = QString();
    expectOnly(lines, "6:1 fatal", "shows 1 settings");
}

TEST(HeaderReviewTest, WantsATypeFirst)
{
    QStringList empty = soundHeader;
    empty[2] = empty[3] = QString();
    expectProblem(empty, "2:1 fatal", "\"Global\" has no members");
    expectProblem(without(7), "8@\"Title@ fatal",
                  "the first member of a struct must be its \"type\"");
    expectProblem(with(13, "\"Low\"", "\"type\""), "13@\"type@ fatal", "only the first member");
    expectProblem(with(7, "unsigned char", "short"), "7@num@ fatal", "one byte");
    expectProblem(with(7, "num, auto", "num, 4"), "7@num@ fatal", "one byte");
    expectOnly(
        with(7, "2, 2, x1, 0, \"type\", \"\", A, 2", "255, 255, x1, 0, \"type\", \"\", A, 255"),
        "7:", "255 is not a type");
    expectOnly(with(7, "2, 2, x1, 0, \"type\", \"\", A, 2", "1, 1, x1, 0, \"type\", \"\", A, 1"),
               "7@1, -1@ error", "the struct in line 2 also has the type 1");
}

TEST(HeaderReviewTest, WarnsOfAMissingChecksum)
{
    expectOnly(without(16), "6:1 warning", "damage goes unnoticed");
    expectOnly(with(16, "x1", "x2"), "16:", "scale factor 1");
    expectOnly(with(16, "unsigned char", "short"), "16:", "one byte");
}

// Formulas

TEST(HeaderReviewTest, NamesUnknownVariablesAndTheNearestOnes)
{
    expectOnly(with(14, "low + 1", "lw + 1"), "14@lw@ fatal no setting is called \"lw\"", "| low");
    expectOnly(with(14, "low + 1", "1 + voltage * 2"), "14@voltage@ fatal", "\"voltage\"");
    expectOnly(with(14, "low + 1", "Low"), "14@Low@ fatal", "| low");
}

TEST(HeaderReviewTest, RefusesFormulasThatNameHiddenSettings)
{
    expectOnly(with(14, "low + 1", "sum + 1"), "14@sum@ fatal", "\"sum\" is not shown");
}

TEST(HeaderReviewTest, WarnsOfFormulasThatNameTexts)
{
    expectProblem(with(14, "low + 1", "low + title"), "14@title@ warning",
                  "\"title\" is not a num");
}

TEST(HeaderReviewTest, RefusesLoopsOfFormulas)
{
    const QStringList lines = with(13, "0, 9", "0, high");
    const QString loop = "loop: \"Low\" -> \"High\" -> \"Low\"";
    expectProblem(lines, "14@low, 9@ fatal", loop);
    expectProblem(lines, "14@low + 1@ fatal", loop);
    EXPECT_EQ(reviewed(lines).size(), 2);
    expectOnly(with(13, "0, 9", "0, low"), "13@low, x@ fatal", "loop: \"Low\" -> \"Low\"");
    expectProblem(with(13, "0, 9", "0, low"), "13@low, x@", "| a formula without \"low\"");
}

TEST(HeaderReviewTest, FindsEveryLoop)
{
    QStringList lines = with(13, "0, 9", "0, low");
    lines[13].replace("low, 9", "low, high");
    const QStringList found = reviewed(lines);
    ASSERT_EQ(found.size(), 2) << qPrintable(found.join('\n'));
    EXPECT_TRUE(found.at(0).startsWith(withColumn(lines, "13@low, x@ fatal")));
    EXPECT_TRUE(found.at(1).startsWith(withColumn(lines, "14@high, x@ fatal")));
}

TEST(HeaderReviewTest, RefusesChangesThatMultiply)
{
    QStringList lines = soundHeader;
    for (int i = 0; i < 12; ++i) {
        const QString previous = i == 0 ? QString("low") : QString("s%1").arg(i - 1);
        lines.insert(14 + i, QString("unsigned char s%1; // num, auto, %2, %2, x1, 0, \"S%1\", "
                                     "\"\", A, %2, %3, basic")
                                 .arg(i)
                                 .arg(previous)
                                 .arg(5 + i));
    }
    // 3^0 + ... + 3^9 changes of what follows the third, but fewer than 10000 of what follows the fourth
    expectOnly(lines, "17@s2@ fatal a change of \"S2\" triggers more than 10000 others");
}

// Lines that cannot be parsed

TEST(HeaderReviewTest, RefusesLinesWithTooFewFields)
{
    expectOnly(with(13, ", 2, basic", ""), "13:", "fatal 10 fields where a num has 12");
    expectProblem(with(15, ", 4, \"On\", \"Off\", basic", ""),
                  "15:", "5 fields where a list has 7");
    expectProblem(with(13, "; // num", "; // number"), "13@number@ fatal",
                  "\"number\" is not a kind");
    expectProblem(with(13, "unsigned char low; ", ""), "13:1 fatal", "a comment line");
    expectProblem(with(13, soundHeader.at(12), "; // num"), "13:1 fatal", "a type and a name");
    expectProblem(with(13, soundHeader.at(12), "unsigned char low;"), "13:19 fatal", "description");
}

TEST(HeaderReviewTest, NamesACommaInsideQuotes)
{
    expectOnly(with(13, "\"Low\"", "\"Low, V\""), "13@, V\"@ fatal",
               "a comma splits \"Low V\": 13 fields where a num has 12 | \"Low V\"");
    expectOnly(with(13, " \"V\"", ""), "13@, A@ fatal",
               "an empty field is skipped, all fields after it move up: 11 fields where");
}

TEST(HeaderReviewTest, NamesFieldsWithoutQuotes)
{
    expectOnly(with(13, "\"V\"", "mV"), "13@mV@ error the units loses", "| \"mV\"");
    expectProblem(with(8, "\"one\"", "one"), "8@one@ error the default loses", "| \"one\"");
}

TEST(HeaderReviewTest, RefusesCommentsInsideAStruct)
{
    expectOnly(withAnother(13, "  // volts"), "13:3 fatal", "a comment line inside a struct");
}

TEST(HeaderReviewTest, RefusesAStructThatIsNotClosedByABraceAlone)
{
    expectOnly(with(5, "}", "};"), "5:1 fatal \"};\" does not close a struct", "| }");
    expectOnly(without(5), "6:1 fatal \"Global\" is not closed before this line");
    expectOnly(without(17), "18:0 warning \"Cell\" is not closed");
}

TEST(HeaderReviewTest, FindsStructHeadersThatOpenNothing)
{
    expectOnly(with(6, "\"Cell\"", "\"Li-Ion\""), "6@-@ fatal", "its members are ignored");
    expectOnly(with(2, "global", "Global"), "2:41 fatal", "| global");
    EXPECT_EQ(reviewed(withAnother(1, "// struct Cell comes below")), QStringList());
}

TEST(HeaderReviewTest, NamesGlobalStructsThatAreDropped)
{
    expectProblem(soundHeader + soundHeader.mid(1, 4), "2:1 error", "those in line 18 are used");
}

TEST(HeaderReviewTest, WantsAStartAddress)
{
    expectOnly(without(1), "1:0 fatal", "the profile start address is missing");
    expectOnly(with(1, "0x400", "four"), "1@four@ fatal", "\"four\" is not an address");
    expectOnly(with(1, "0x400", "0x17C01"), "1@0x17@ error", "outside the charger's flash");
    EXPECT_EQ(reviewed(with(1, "0x400", "0x17C00")), QStringList());
    EXPECT_EQ(reviewed(with(1, "#define", " # define")), QStringList());
}

TEST(HeaderReviewTest, TakesAnEmptyTextForAHeaderWithNothingInIt)
{
    EXPECT_EQ(reviewed({}).size(), 3);
}

// Values

TEST(HeaderReviewTest, WarnsOfDefaultsOutsideTheirBounds)
{
    expectOnly(with(14, "low + 1", "low + 7"), "14@low + 7@ warning",
               "the default 10 is not between 3 and 9");
    expectProblem(with(13, "0, 9", "9, 0"), "13@9, 0@ warning", "9 is above the upper bound 0");
}

TEST(HeaderReviewTest, WarnsOfValuesThatAnImageDoesNotHold)
{
    expectOnly(with(13, "0, 9", "0, 256"), "13@256@ warning", "256 does not fit into 8 bits");
    expectProblem(with(13, "0, 9", "-1, 9"), "13@-1@ warning", "negative");
    expectProblem(with(13, "x1, 0", "x1, 1"), "13@x1@ warning", "are changed when read back");
    expectProblem(with(13, "x1, 0", "x1, -1"), "13@-1@ warning", "decimal places");
}

TEST(HeaderReviewTest, NumbersAreHeldUpToTheGreatestOfTheirTypes)
{
    struct Limit
    {
        QString type;
        QString greatest;
        QString next;
        QString bits;
    };
    // Numbers are counted in signed steps of 32 bits, so the widest types hold half of theirs.
    for (const Limit& limit : {Limit{"unsigned char", "255", "256", "8 bits"},
                               Limit{"unsigned short", "65535", "65536", "16 bits"},
                               Limit{"unsigned long", "2147483647", "2147483648", "32 bits"}}) {
        QStringList header = with(13, "unsigned char", limit.type);
        header[12].replace("0, 9", "0, " + limit.greatest);
        EXPECT_EQ(reviewed(header), QStringList());
        header[12].replace(limit.greatest, limit.next);
        expectOnly(header, "13@" + limit.next + "@ warning", "does not fit into " + limit.bits);
    }
}

TEST(HeaderReviewTest, RefusesScaleFactorsThatCannotBeReadBack)
{
    expectProblem(with(14, "x1, 0", "xlow, 0"), "14@xlow@ error", "cannot be read back");
    expectOnly(with(13, "x1, 0", "x0, 0"), "13@x0@ error", "cannot be read back");
    expectOnly(with(13, "x1, 0", "0.1, 0"), "13@0.1@ fatal", "first character");
    expectProblem(with(13, "x1, 0", "0.1, 0"), "13@0.1@", "| x0.1");
}

TEST(HeaderReviewTest, RefusesTextsThatAreCut)
{
    expectOnly(with(8, "\"one\"", "\"one more\""), "8@\"one@ error",
               "longer than the 7 characters of title[8]");
    EXPECT_EQ(reviewed(with(8, "\"one\"", "\"one two\"")), QStringList());
}

TEST(HeaderReviewTest, RefusesListsWhoseItemsGetLost)
{
    expectOnly(with(15, "\"On\", \"Off\"", "\"On!\", \"Off\""), "15@\"On!@ error", "an empty item");
    expectOnly(with(15, "\"Off\", 4", "\"Auto\", 4"), "15:", "the default is not one of the items");
    expectOnly(with(15, "\"On\", \"Off\"", "\"Stand\", \"Off\""), "15@\"Stand@ error",
               "longer than the 4 characters");
    expectOnly(with(15, "\"On\", \"Off\"", "\"On\", \"On\", \"Off\""), "15@\"On\", \"Off@ warning",
               "twice");
}

TEST(HeaderReviewTest, RefusesTextsBeyondAscii)
{
    expectOnly(with(8, "\"one\"", "\"\u00e9t\u00e9\""), "8@\"\u00e9@ error",
               "the charger cannot store");
}

TEST(HeaderReviewTest, NamesOddDefaultsOfABoolAndLevels)
{
    expectOnly(with(10, "A, 0,", "A, true,"), "10:", "\"true\" means off");
    expectOnly(with(13, "basic", "Basic"), "13:", "makes this an advanced setting");
}
