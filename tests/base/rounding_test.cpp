#include "base/rounding.h"

#include "support/printing.h"

#include <limits>

namespace
{
constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();
constexpr double infinity = std::numeric_limits<double>::infinity();
} // namespace

TEST(RoundHalfUpTest, RoundsToTheNearestInteger)
{
    EXPECT_EQ(roundHalfUp(0), 0);
    EXPECT_EQ(roundHalfUp(7), 7);
    EXPECT_EQ(roundHalfUp(-7), -7);
    EXPECT_EQ(roundHalfUp(2.4), 2);
    EXPECT_EQ(roundHalfUp(2.6), 3);
    EXPECT_EQ(roundHalfUp(-2.4), -2);
    EXPECT_EQ(roundHalfUp(-2.6), -3);
}

TEST(RoundHalfUpTest, RoundsHalvesUpward)
{
    EXPECT_EQ(roundHalfUp(0.5), 1);
    EXPECT_EQ(roundHalfUp(1.5), 2);
    EXPECT_EQ(roundHalfUp(2.5), 3);
    EXPECT_EQ(roundHalfUp(-0.5), 0);
    EXPECT_EQ(roundHalfUp(-1.5), -1);
    EXPECT_EQ(roundHalfUp(-2.5), -2);
}

TEST(RoundHalfUpTest, SaturatesAtTheBoundsOfAnInteger)
{
    EXPECT_EQ(roundHalfUp(2147483646.4), 2147483646);
    EXPECT_EQ(roundHalfUp(2147483647.0), largest);
    EXPECT_EQ(roundHalfUp(2147483648.0), largest);
    EXPECT_EQ(roundHalfUp(1e300), largest);
    EXPECT_EQ(roundHalfUp(infinity), largest);
    EXPECT_EQ(roundHalfUp(-2147483648.0), smallest);
    EXPECT_EQ(roundHalfUp(-2147483649.0), smallest);
    EXPECT_EQ(roundHalfUp(-1e300), smallest);
    EXPECT_EQ(roundHalfUp(-infinity), smallest);
}

TEST(RoundHalfUpTest, NotANumberIsZero)
{
    EXPECT_EQ(roundHalfUp(std::numeric_limits<double>::quiet_NaN()), 0);
}
