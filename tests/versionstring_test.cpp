#include "versionstring.h"

#include "support/standardoutputcapture.h"

#include <gtest/gtest.h>

#include <csignal>

namespace
{
struct Pair
{
    const char* lesser;
    const char* greater;
};

class VersionStringOrderTest : public ::testing::TestWithParam<Pair>
{};

VersionString version(const char* text)
{
    return VersionString(QString::fromUtf8(text));
}

const char* const patternAssertion =
    R"re(ASSERT: "this->versionString\.contains\(QRegExp\("\^\(\\\\d\+\\\\\.\)\*\\\\d\+\$"\)\)")re"
    R"re( in file versionstring\.cpp, line [0-9]+)re";
} // namespace

TEST_P(VersionStringOrderTest, ComparesBothWays)
{
    const VersionString lesser = version(GetParam().lesser);
    const VersionString greater = version(GetParam().greater);
    EXPECT_EQ(lesser.compare(greater), -1);
    EXPECT_EQ(greater.compare(lesser), 1);

    EXPECT_TRUE(lesser.lessThan(greater));
    EXPECT_TRUE(lesser.lessThanEqualTo(greater));
    EXPECT_FALSE(lesser.equalTo(greater));
    EXPECT_FALSE(lesser.greaterThan(greater));
    EXPECT_FALSE(lesser.greaterThanEqualTo(greater));

    EXPECT_TRUE(greater.greaterThan(lesser));
    EXPECT_TRUE(greater.greaterThanEqualTo(lesser));
    EXPECT_FALSE(greater.equalTo(lesser));
    EXPECT_FALSE(greater.lessThan(lesser));
    EXPECT_FALSE(greater.lessThanEqualTo(lesser));
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, VersionStringOrderTest,
    ::testing::Values(Pair{"1.2.0", "1.2.3"}, Pair{"1.1.2", "1.2.3"}, Pair{"1.5.2", "1.5.2.5"},
                      Pair{"45", "66"}, Pair{"1.9", "1.10"}, Pair{"1.2", "1.2.0"},
                      Pair{"1.9.9", "2"}, Pair{"0.9", "0.99"}, Pair{"1.2.3", "1.10"},
                      Pair{"9", "10"}, Pair{"1.02", "1.3"}, Pair{"1.99999999999", "1.100000000000"},
                      Pair{"2147483647", "2147483648"}, Pair{"4294967295.9", "4294967296"},
                      Pair{"1.18446744073709551615", "1.18446744073709551616"},
                      Pair{"1.2", "1.4294967296"}, Pair{"1.0009999999999999", "1.10000000000000"},
                      Pair{"99999999999", "99999999999.0"}));

TEST(VersionStringTest, EqualTextsAreEqual)
{
    for (const char* text : {"1.2.3", "10", "0", "0.99"}) {
        EXPECT_EQ(version(text).compare(version(text)), 0) << text;
        EXPECT_TRUE(version(text).equalTo(version(text))) << text;
        EXPECT_TRUE(version(text).lessThanEqualTo(version(text))) << text;
        EXPECT_TRUE(version(text).greaterThanEqualTo(version(text))) << text;
        EXPECT_FALSE(version(text).lessThan(version(text))) << text;
        EXPECT_FALSE(version(text).greaterThan(version(text))) << text;
    }
}

TEST(VersionStringTest, LeadingZerosDoNotCount)
{
    EXPECT_TRUE(version("1.02").equalTo(version("1.2")));
    EXPECT_TRUE(version("01.2").equalTo(version("1.2")));
    EXPECT_TRUE(version("1.000000000000000000000002").equalTo(version("1.2")));
    EXPECT_TRUE(version("0000.00000000000000").equalTo(version("0.0")));
    EXPECT_TRUE(version("1.00099999999999").equalTo(version("1.99999999999")));
}

TEST(VersionStringTest, DoesNotPadWithZeros)
{
    EXPECT_FALSE(version("1.2").equalTo(version("1.2.0")));
    EXPECT_TRUE(version("1.2").lessThan(version("1.2.0")));
}

TEST(VersionStringTest, KeepsTheTextAsGiven)
{
    EXPECT_EQ(version("01.002.3").toString().toStdString(), "01.002.3");
}

TEST(VersionStringTest, PrintsTheVersion)
{
    const StandardOutputCapture output;
    version("1.02").print();
    EXPECT_EQ(output.text(), "Version: 1.02\n");
}

TEST(VersionStringTest, TellsDottedVersions)
{
    for (const char* text : {"0", "10", "1.2", "1.2.3", "01.002"}) {
        EXPECT_TRUE(VersionString::isDottedVersion(QString::fromLatin1(text))) << text;
    }
    for (const char* text : {"", "v1.2", "1..2", "1.2.", ".1", ".", "1.2 ", " 1.2", "1. 2", "1.2b",
                             "1,2", "-1", "+1", "1.2\n"}) {
        EXPECT_FALSE(VersionString::isDottedVersion(QString::fromLatin1(text))) << text;
    }
}

TEST(VersionStringTest, TellsDottedVersionsOfAnyLength)
{
    const QString parts = QString("1.").repeated(60000);
    EXPECT_TRUE(VersionString::isDottedVersion(parts + '1'));
    EXPECT_FALSE(VersionString::isDottedVersion(parts));
    EXPECT_FALSE(VersionString::isDottedVersion(parts + "1x"));
    EXPECT_TRUE(VersionString::isDottedVersion(QString("9").repeated(60000)));
    EXPECT_TRUE(VersionString(parts + '1').greaterThan(VersionString(parts + '0')));
}

TEST(VersionStringTest, PartsOfAnyLengthCompareByNumber)
{
    const QString nines(50000, '9');
    const VersionString shorter("1." + nines);
    EXPECT_TRUE(shorter.lessThan(VersionString("1.1" + QString(50000, '0'))));
    EXPECT_TRUE(shorter.greaterThan(VersionString("1.8" + nines.mid(1))));
    EXPECT_TRUE(shorter.equalTo(VersionString("1.000" + nines)));
}

TEST(VersionStringTest, SelfCheckPasses)
{
    VersionString::runTests();
}

TEST(VersionStringDeathTest, RefusesWhatIsNoDottedVersion)
{
    for (const char* text : {"v1.2", "1..2", "1.2.", "", " 1.2", "1.2\n"}) {
        EXPECT_EXIT(version(text), ::testing::KilledBySignal(SIGABRT), patternAssertion) << text;
    }
}
