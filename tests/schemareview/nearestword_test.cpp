#include "schemareview/nearestword.h"

#include <gtest/gtest.h>

namespace
{
const QStringList words{"num", "bool", "string", "list", "PROFILESTARTADDRESS"};
}

TEST(NearestWordTest, FindsAWordWithOneSlip)
{
    for (const QString misspelt : {"nm", "numm", "nun", "nmu", "NUM"}) {
        EXPECT_EQ(nearestWord(misspelt, words), "num") << qPrintable(misspelt);
    }
}

TEST(NearestWordTest, LongerWordsMayHaveMoreSlips)
{
    EXPECT_EQ(nearestWord("srting", words), "string");
    EXPECT_EQ(nearestWord("sstirng", words), "string");
    EXPECT_EQ(nearestWord("PROFILE_START_ADRESS", words), "PROFILESTARTADDRESS");
}

TEST(NearestWordTest, PrefersTheNearestOne)
{
    EXPECT_EQ(nearestWord("lists", {"lisp", "lost", "list"}), "list");
}

TEST(NearestWordTest, FindsNothingFarAway)
{
    EXPECT_EQ(nearestWord("number", words), "");
    EXPECT_EQ(nearestWord("", words), "");
    EXPECT_EQ(nearestWord("num", {}), "");
    EXPECT_EQ(nearestWord(QString(100000, 'n'), {QString(100000, 'n')}), "");
}
