// The key block of a bundle, and its version.

#include "support/kelvaronbundletest.h"

#include <csignal>

using ::testing::KilledBySignal;

namespace
{
void parseKeys(const QString& path)
{
    sendStandardOutputToStandardError();
    KelvaronBundle bundle(path);
    bundle.parseKeyValuePairs();
}
} // namespace

TEST_F(KelvaronBundleTest, ReadsTheKeyBlock)
{
    const QByteArray bytes =
        "before = 1\n...\nVERSION = 1.2.0\n\t MIN_x.2=0.9\t\nlate=\tx_1 \n...\n"
        "after = 2\n...\nsecond = 3\n...\n";
    EXPECT_EQ(value(bytes, "VERSION"), "1.2.0");
    EXPECT_EQ(value(bytes, "MIN_x.2"), "0.9");
    EXPECT_EQ(value(bytes, "late"), "x_1");
    for (const char* key : {"before", "after", "second", "version", ""}) {
        EXPECT_EQ(value(bytes, key), "") << key;
    }
}

TEST_F(KelvaronBundleTest, RepeatedKeyKeepsTheLastValue)
{
    EXPECT_EQ(value("...\nVERSION = 1\nVERSION = 2\n...\n", "VERSION"), "2");
}

TEST_F(KelvaronBundleTest, KeyBlockMayRunToTheEnd)
{
    EXPECT_EQ(value("...\nA = 1\nB = 2", "B"), "2");
    EXPECT_EQ(value("...\n...\nA = 1\n", "A"), "");
    EXPECT_EQ(value("...", "A"), "");
}

TEST_F(KelvaronBundleTest, OnlyALineOfExactlyThreeDotsOpensTheKeyBlock)
{
    EXPECT_EQ(value(" ...\nA = 1\n....\nA = 2\n... \nA = 3\n...\nA = 4\n...\n", "A"), "4");
}

TEST_F(KelvaronBundleTest, ValueMayBeBlank)
{
    EXPECT_EQ(value("...\nA = \nB = 2\n...\n", "A"), "");
    EXPECT_EQ(value("...\nA = \nB = 2\n...\n", "B"), "2");
}

TEST_F(KelvaronBundleTest, WithoutKeyBlockEveryKeyIsEmpty)
{
    EXPECT_EQ(value(section("VERSION = 3\n"), "VERSION"), "");
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron", section("VERSION = 3\n")), "1.4.2");
}

TEST_F(KelvaronBundleTest, VersionComesFromTheKeyFirst)
{
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron", keys), "1.2.0");
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nVERSION = beta_2\n...\n"), "beta_2");
}

TEST_F(KelvaronBundleTest, BlankVersionFallsBackToTheName)
{
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nVERSION = \n...\n"), "1.4.2");
    EXPECT_EQ(versionOf("1.4.2.kelvaron", "...\nversion = 3\n...\n"), "1.4.2");
}

TEST_F(KelvaronBundleTest, VersionComesFromTheName)
{
    EXPECT_EQ(versionOf("1.4.2_chemistries.kelvaron"), "1.4.2");
    EXPECT_EQ(versionOf("1.4.2.kelvaron"), "1.4.2");
    EXPECT_EQ(versionOf("v1.4.kelvaron"), "1.4");
    EXPECT_EQ(versionOf("7.kelvaron"), "7");
    EXPECT_EQ(versionOf("charger12_v1.4.kelvaron"), "12");
    EXPECT_EQ(versionOf("a1.2-3.4.kelvaron"), "1.2");
}

TEST_F(KelvaronBundleTest, VersionWithoutKeyAndNumberIsZero)
{
    EXPECT_EQ(versionOf("charger.kelvaron"), "0");
    EXPECT_EQ(versionOf("charger.kelvaron.2"), "0");
    EXPECT_EQ(versionOf("1.2.txt"), "0");
}

TEST_F(KelvaronBundleTest, FolderNamesDoNotCountAsVersion)
{
    ASSERT_TRUE(QDir(filesFolder).mkdir("5.6.kelvaron"));
    EXPECT_EQ(versionOf("5.6.kelvaron/charger.kelvaron"), "0");
}

TEST_F(KelvaronBundleTest, VersionOfAnAbsentFileComesFromItsName)
{
    EXPECT_EQ(KelvaronBundle::getBundleVersion(pathOf("v3.1.kelvaron")), "3.1");
}

TEST_F(KelvaronBundleDeathTest, RefusesLinesThatAreNoPair)
{
    for (const char* line : {"VERSION 1.2", "VERSION = 1.2 beta", "VERSION = \"1.2\"", "A = B = C",
                             "MY KEY = 1", "", "# comment", "A = 1-2"}) {
        const QString bundle = written(QByteArray("...\nA = 1\n") + line + "\n...\n");
        EXPECT_EXIT(
            parseKeys(bundle), KilledBySignal(SIGABRT),
            R"re(ASSERT: "line\.contains\(QRegExp\("\^\\\\s\*\[\\\\w\\\\\.\]\*\\\\s\*\\\\=)re"
            R"re(\\\\s\*\[\\\\w\\\\\.\]\*\\\\s\*\$"\)\)")re"
            R"re( in file KelvaronBundle/kelvaronbundle\.cpp)re")
            << line;
    }
}

TEST_F(KelvaronBundleDeathTest, RefusesPairsWithAMissingHalf)
{
    for (const char* line : {"VERSION=", "=1.2", "="}) {
        const QString bundle = written(QByteArray("...\nA = 1\n") + line + "\n...\n");
        EXPECT_EXIT(
            parseKeys(bundle), KilledBySignal(SIGABRT),
            "ASSERT: \"parts.length\\(\\) == 2\" in file KelvaronBundle/kelvaronbundle\\.cpp, line [0-9]+\n")
            << line;
    }
}

TEST_F(KelvaronBundleDeathTest, NamesFileLineNumberAndLine)
{
    const QString bundle = written("first\n...\nA = 1\nbroken line\n...\n");
    EXPECT_EXIT(parseKeys(bundle), KilledBySignal(SIGABRT),
                "b.kelvaron.*[^0-9]4[^0-9].*broken line\n");
}
