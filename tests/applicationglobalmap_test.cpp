#include "applicationglobalmap.h"

#include "support/printing.h"

#include <limits>

TEST(ApplicationGlobalMapTest, KeepsTexts)
{
    ApplicationGlobalMap::putString("text", "1.2.3");
    EXPECT_EQ(ApplicationGlobalMap::getString("text"), "1.2.3");
    ApplicationGlobalMap::putString("text", "other");
    EXPECT_EQ(ApplicationGlobalMap::getString("text"), "other");
}

TEST(ApplicationGlobalMapTest, KeysAreIndependentAndCaseSensitive)
{
    ApplicationGlobalMap::putString("first", "1");
    ApplicationGlobalMap::putString("second", "2");
    ApplicationGlobalMap::putString("First", "3");
    EXPECT_EQ(ApplicationGlobalMap::getString("first"), "1");
    EXPECT_EQ(ApplicationGlobalMap::getString("second"), "2");
    EXPECT_EQ(ApplicationGlobalMap::getString("First"), "3");
}

TEST(ApplicationGlobalMapTest, MissingKeyIsEmpty)
{
    EXPECT_TRUE(ApplicationGlobalMap::getString("never stored").isEmpty());
    EXPECT_TRUE(ApplicationGlobalMap::getString("never stored").isEmpty());
    EXPECT_EQ(ApplicationGlobalMap::getDouble("never stored"), 0);
    EXPECT_EQ(ApplicationGlobalMap::getInt64("never stored"), 0);
}

TEST(ApplicationGlobalMapTest, StoresNumbersWithSixSignificantDigits)
{
    ApplicationGlobalMap::putDouble("number", 0.0000125);
    EXPECT_EQ(ApplicationGlobalMap::getString("number"), "1.25e-05");
    ApplicationGlobalMap::putDouble("number", 1234567);
    EXPECT_EQ(ApplicationGlobalMap::getString("number"), "1.23457e+06");
    EXPECT_EQ(ApplicationGlobalMap::getDouble("number"), 1234570);
    ApplicationGlobalMap::putDouble("number", 3.0);
    EXPECT_EQ(ApplicationGlobalMap::getString("number"), "3");
    ApplicationGlobalMap::putDouble("number", -2.5);
    EXPECT_EQ(ApplicationGlobalMap::getDouble("number"), -2.5);
}

TEST(ApplicationGlobalMapTest, ReadsNumbersFromTexts)
{
    ApplicationGlobalMap::putString("number", "4.25");
    EXPECT_EQ(ApplicationGlobalMap::getDouble("number"), 4.25);
    ApplicationGlobalMap::putString("number", "no number");
    EXPECT_EQ(ApplicationGlobalMap::getDouble("number"), 0);
    EXPECT_EQ(ApplicationGlobalMap::getInt64("number"), 0);
}

TEST(ApplicationGlobalMapTest, StoresIntegersExactly)
{
    for (const long long value : {0LL, 42LL, -42LL, std::numeric_limits<long long>::max(),
                                  std::numeric_limits<long long>::min()}) {
        ApplicationGlobalMap::putInt64("integer", value);
        EXPECT_EQ(ApplicationGlobalMap::getInt64("integer"), value);
    }
    ApplicationGlobalMap::putInt64("integer", -9007199254740993LL);
    EXPECT_EQ(ApplicationGlobalMap::getString("integer"), "-9007199254740993");
}
