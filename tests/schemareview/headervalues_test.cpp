// How a header's settings are stored: their bits and sizes, and the values that those hold.

#include "support/reviewedheader.h"

using namespace ReviewedHeader;

// Bits and sizes

TEST(HeaderReviewTest, RefusesBitFieldsThatDoNotAddUp)
{
    expectOnly(with(Modifiable, "bool, 6", "bool, 5"), at(Low, "auto"), "fatal", "have 7 bits");
    expectProblem(with(Modifiable, "bool, 6", "bool, 5"), at(Low, "auto"), "fatal",
                  "from line 10 on have 7 bits, not whole bytes, before this member | "
                  "fields of 1 more bit, or of 7 fewer");
    QStringList lines = with(Modifiable, "bool, 6", "bool, 5");
    lines.move(Modifiable - 1, Sum - 1); // the flag is now after the checksum
    expectProblem(lines, at(Low - 1, "auto"), "fatal", "have 2 bits");
    expectProblem(lines, at(Cell, 1), "fatal", "have 5 bits");
}

TEST(HeaderReviewTest, RefusesAChecksumInsideAByte)
{
    expectProblem(withAnother(Sum, "char b; // bool, 3, \"B\", A, 0, -1, basic"),
                  at(Sum + 1, "auto"), "fatal", "have 3 bits");
}

TEST(HeaderReviewTest, RefusesAChecksumOfABitField)
{
    expectOnly(with(Sum, "num, auto", "num, 3"), at(Sum, "num, 3"), "fatal",
               "a number of one byte");
}

TEST(HeaderReviewTest, RefusesAChecksumAmongBitFieldsThatAddUpWithIt)
{
    QStringList lines = with(Sum, "num, auto", "num, 8");
    EXPECT_EQ(reviewed(lines), QStringList());
    lines.insert(Sum, "char c; // bool, 5, \"C\", A, 0, -1, basic");
    lines.insert(Sum - 1, "char b; // bool, 3, \"B\", A, 0, -1, basic");
    expectProblem(lines, at(Sum + 1, "8, 0"), "fatal", "have 3 bits");
    expectProblem(lines, at(Cell, 1), "fatal", "have 5 bits");
}

TEST(HeaderReviewTest, RefusesUnusableSizes)
{
    expectProblem(with(Low, "num, auto", "num, 9"), at(Low, "9, 0"), "fatal", "9 bits do not fit");
    expectProblem(with(Low, "num, auto", "num, full"), at(Low, "full"), "fatal",
                  "\"full\" is not a size");
    expectProblem(with(Low, "num, auto", "num, -8"), at(Low, "-8"), "fatal", "is not a size");
    expectProblem(with(Low, "num, auto", "num, 99999999999"), at(Low, "99999"), "fatal",
                  "do not fit");
    expectProblem(with(Modifiable, "bool, 6", "bool, 14"), at(Modifiable, "14"), "fatal",
                  "14 bits do not fit into a bool");
    expectProblem(with(Title, "string, auto", "string, 64"), at(Title, "64"), "fatal",
                  "cannot be a bit field");
}

TEST(HeaderReviewTest, RefusesStructsTooLargeForAnImage)
{
    expectOnly(with(Title, "title[8]", "title[760]"), at(Cell, 1), "error",
               "\"Cell\" takes 1040 of the 2048");
    EXPECT_EQ(reviewed(with(Title, "title[8]", "title[740]")), QStringList());
    expectOnly(with(GlobalSum, "unsigned char sum",
                    "char x[2000]; // string, auto, \"X\", A, \"\", 0, basic\nunsigned char sum"),
               at(Global, 1), "error", "\"Global\" takes");
}

TEST(HeaderReviewTest, RefusesTypesThatTheChargerDoesNotHave)
{
    expectOnly(with(Low, "unsigned char", "float"), at(Low, 1), "fatal", "\"float\" is not a type");
    expectOnly(with(Active, "unsigned char", "bool"), at(Active, 1), "error",
               "\"bool\" is not a type");
    expectOnly(with(Title, "char", "short"), at(Title, 1), "error", "single bytes");
}

TEST(HeaderReviewTest, RefusesABoolThatIsReadInMoreBytesThanItIsStoredIn)
{
    expectProblem(withAnother(Low, "short b; // bool, auto, \"B\", A, 0, -1, basic"), at(Low, 1),
                  "error", "stored in one byte and read in 2");
}

TEST(HeaderReviewTest, RefusesArraysThatAreNone)
{
    expectOnly(with(Title, "title[8]", "title[ 8 ]"), at(Title, "]"), "error",
               "blanks in the brackets");
    expectOnly(with(Low, "low;", "low2[ 1 ] low;"), at(Low, "low;"), "fatal",
               "blanks in the brackets");
    expectOnly(with(Title, "title[8]", "title[LEN]"), at(Title, 6), "error",
               "without a size in digits");
    expectOnly(with(Title, "title[8]", "title"), at(Title, 6), "error", "needs an array");
    expectOnly(with(Low, "low;", "low[2];"), at(Low, 15), "error", "cannot be an array");
}

// Values

TEST(HeaderReviewTest, WarnsOfDefaultsOutsideTheirBounds)
{
    expectOnly(with(High, "low + 1", "low + 7"), at(High, "low + 7"), "warning",
               "the default 10 is not between 3 and 9");
    expectProblem(with(Low, "0, 9", "9, 0"), at(Low, "9, 0"), "warning",
                  "9 is above the upper bound 0");
}

TEST(HeaderReviewTest, WarnsOfValuesThatAnImageDoesNotHold)
{
    expectOnly(with(Low, "0, 9", "0, 256"), at(Low, "256"), "warning",
               "256 does not fit into 8 bits");
    expectProblem(with(Low, "0, 9", "-1, 9"), at(Low, "-1"), "warning", "negative");
    expectProblem(with(Low, "x1, 0", "x1, 1"), at(Low, "x1"), "warning",
                  "are changed when read back");
    expectProblem(with(Low, "x1, 0", "x1, -1"), at(Low, "-1"), "warning", "decimal places");
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
        QStringList header = with(Low, "unsigned char", limit.type);
        replaceIn(header, Low, "0, 9", "0, " + limit.greatest);
        EXPECT_EQ(reviewed(header), QStringList());
        replaceIn(header, Low, limit.greatest, limit.next);
        expectOnly(header, at(Low, limit.next), "warning", "does not fit into " + limit.bits);
    }
}

TEST(HeaderReviewTest, RefusesScaleFactorsThatCannotBeReadBack)
{
    expectProblem(with(High, "x1, 0", "xlow, 0"), at(High, "xlow"), "error", "cannot be read back");
    expectOnly(with(Low, "x1, 0", "x0, 0"), at(Low, "x0"), "error", "cannot be read back");
    expectOnly(with(Low, "x1, 0", "0.1, 0"), at(Low, "0.1"), "fatal", "first character");
    expectProblem(with(Low, "x1, 0", "0.1, 0"), at(Low, "0.1"), "fatal", "| x0.1");
}

TEST(HeaderReviewTest, RefusesTextsThatAreCut)
{
    expectOnly(with(Title, "\"one\"", "\"one more\""), at(Title, "\"one"), "error",
               "longer than the 7 characters of title[8]");
    EXPECT_EQ(reviewed(with(Title, "\"one\"", "\"one two\"")), QStringList());
}

TEST(HeaderReviewTest, RefusesListsWhoseItemsGetLost)
{
    expectOnly(with(Mode, "\"On\", \"Off\"", "\"On!\", \"Off\""), at(Mode, "\"On!"), "error",
               "an empty item");
    expectOnly(with(Mode, "\"Off\", 4", "\"Auto\", 4"), at(Mode),
               "error the default is not one of the items");
    expectOnly(with(Mode, "\"On\", \"Off\"", "\"Stand\", \"Off\""), at(Mode, "\"Stand"), "error",
               "longer than the 4 characters");
    expectOnly(with(Mode, "\"On\", \"Off\"", "\"On\", \"On\", \"Off\""), at(Mode, "\"On\", \"Off"),
               "warning", "twice");
}

TEST(HeaderReviewTest, RefusesTextsBeyondAscii)
{
    expectOnly(with(Title, "\"one\"", "\"\u00e9t\u00e9\""), at(Title, "\"\u00e9"), "error",
               "the charger cannot store");
}

TEST(HeaderReviewTest, NamesOddDefaultsOfABoolAndLevels)
{
    expectOnly(with(Active, "A, 0,", "A, true,"), at(Active),
               "error the default \"true\" means off");
    expectOnly(with(Low, "basic", "Basic"), at(Low), "warning", "makes this an advanced setting");
}
