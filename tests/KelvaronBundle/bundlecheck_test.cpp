#include "KelvaronBundle/bundlecheck.h"

#include "base/textfile.h"
#include "support/bundletext.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace
{
class BundleCheckTest : public ::testing::Test
{
protected:
    bool isSafe(const QByteArray& bytes) const
    {
        const QString path = folder.filePath("b.kelvaron");
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        file.close();
        return BundleCheck::isSafe(path);
    }

    bool isSafeKeyLine(const QByteArray& line) const
    {
        return isSafe(BundleText().keyLine(line).section("device\n").bytes());
    }

    QTemporaryDir folder;
};

TEST_F(BundleCheckTest, SoundBundlesAreSafe)
{
    EXPECT_TRUE(isSafe(Samples::bundle().bytes()));
    EXPECT_TRUE(isSafe(Samples::bundle().key("VERSION", "1.2.0").bytes()));
    EXPECT_TRUE(isSafeKeyLine("  A.b_1 =\t2.x_  "));
    EXPECT_TRUE(isSafeKeyLine("A=1\r"));
}

TEST_F(BundleCheckTest, FileThatGivesNothingIsSafe)
{
    EXPECT_TRUE(isSafe(""));
    EXPECT_TRUE(isSafe("no bundle\n"));
    EXPECT_TRUE(BundleCheck::isSafe(folder.filePath("missing.kelvaron")));
    EXPECT_TRUE(BundleCheck::isSafe(""));
}

TEST_F(BundleCheckTest, MalformedKeyLineIsNotSafe)
{
    for (const char* line : {"no pair", "", "A", "A=", "=1", "=", "A = 1 = 2", "A = 1 2",
                             "A = \"1\"", "A-B = 1", "....", ".. ."}) {
        EXPECT_FALSE(isSafeKeyLine(line)) << line;
    }
}

TEST_F(BundleCheckTest, EveryKeyLineIsLookedAt)
{
    EXPECT_FALSE(isSafe("...\nA = 1\nB = 2\nno pair\n...\n"));
    EXPECT_FALSE(isSafe("text\n...\nno pair\n...\n"));
}

TEST_F(BundleCheckTest, KeyBlockWithoutEndIsSafeWhenItsLinesAre)
{
    EXPECT_TRUE(isSafe("...\nA = 1\n"));
    EXPECT_TRUE(isSafe("..."));
    EXPECT_FALSE(isSafe("...\nA = 1\n" + BundleText::marked("device\n")));
}

TEST_F(BundleCheckTest, OnlyTheFirstKeyBlockCounts)
{
    EXPECT_TRUE(isSafe("...\nA = 1\n...\nno pair\n...\nno pair\n"));
}

TEST_F(BundleCheckTest, VersionMayBeUnusable)
{
    EXPECT_TRUE(isSafe(Samples::bundle().key("VERSION", "beta").bytes()));
}

TEST_F(BundleCheckTest, RequiredEditorVersionMustBeUsable)
{
    EXPECT_TRUE(isSafe(Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "12.0.1").bytes()));
    EXPECT_FALSE(isSafe(Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "beta").bytes()));
    EXPECT_FALSE(isSafe(Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1..2").bytes()));
}

TEST_F(BundleCheckTest, WhatIsNoFileIsNotSafe)
{
    EXPECT_FALSE(BundleCheck::isSafe(folder.path()));
    EXPECT_FALSE(BundleCheck::isSafe("/dev/zero"));
    const QString pipe = folder.filePath("pipe.kelvaron");
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_FALSE(BundleCheck::isSafe(pipe)); // and the check does not wait for a writer
}

TEST_F(BundleCheckTest, FileFarTooLargeIsNotSafe)
{
    const QString path = folder.filePath("large.kelvaron");
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(TextFile::largestFile));
    EXPECT_TRUE(BundleCheck::isSafe(path));
    ASSERT_TRUE(file.resize(TextFile::largestFile + 1));
    EXPECT_FALSE(BundleCheck::isSafe(path));
}
} // namespace
