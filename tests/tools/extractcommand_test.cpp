#include "support/bundleprogram.h"

#include <QFileInfo>

using ExtractCommandTest = BundleProgramTest;

TEST_F(ExtractCommandTest, GivesBackWhatWasPacked)
{
    pack({"--key", "VERSION=1", "--file", "notes.txt=device.in"});
    const ProgramRun extracted = run({"extract", "out.kelvaron", "--all", "--output", "a/b"});
    EXPECT_EQ(extracted.exitCode, 0) << extracted.errors;
    EXPECT_EQ(contentOf("a/b/device.txt"), contentOf("device.in"));
    EXPECT_EQ(contentOf("a/b/kelvaron_chemistries.cb"), smallSchema());
    EXPECT_EQ(contentOf("a/b/notes.txt"), contentOf("device.in"));
    EXPECT_EQ(contentOf("a/b/checksums").size(), 3 * 33);
}

TEST_F(ExtractCommandTest, WritesEverySectionToTheCurrentFolderByDefault)
{
    pack();
    EXPECT_EQ(run({"extract", "out.kelvaron"}).exitCode, 0);
    EXPECT_TRUE(exists("device.txt"));
    EXPECT_TRUE(exists("kelvaron_chemistries.cb"));
}

TEST_F(ExtractCommandTest, WritesOneSection)
{
    pack();
    EXPECT_EQ(run({"extract", "out.kelvaron", "--index", "1"}).exitCode, 0);
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), smallSchema());
    EXPECT_FALSE(exists("device.txt"));

    EXPECT_EQ(run({"extract", "out.kelvaron", "--index", "0", "-o", "mine.txt"}).exitCode, 0);
    EXPECT_EQ(contentOf("mine.txt"), "name = test\n");

    ASSERT_TRUE(QDir(folder.path()).mkdir("there"));
    EXPECT_EQ(run({"extract", "out.kelvaron", "--index", "0", "-o", "there"}).exitCode, 0);
    EXPECT_EQ(contentOf("there/device.txt"), "name = test\n");
}

TEST_F(ExtractCommandTest, SectionsOfOneNameDoNotOverwriteEachOther)
{
    writeFile("other.in", "other\n");
    pack({"--key", "VERSION=1", "--file", "Device.txt=other.in"});
    EXPECT_EQ(run({"extract", "out.kelvaron", "-o", "to"}).exitCode, 0);
    EXPECT_EQ(contentOf("to/device.txt"), "name = test\n");
    EXPECT_EQ(contentOf("to/section2-Device.txt"), "other\n");
}

TEST_F(ExtractCommandTest, ANameNeverLeadsOutOfTheFolder)
{
    pack();
    QByteArray bundle = contentOf("out.kelvaron");
    bundle.replace(" device.txt ", " ../escaped.txt ");
    bundle.replace(" kelvaron_chemistries.cb ", "");
    writeFile("out.kelvaron", bundle);
    EXPECT_EQ(run({"extract", "out.kelvaron", "-o", "to"}).exitCode, 0);
    EXPECT_FALSE(exists("escaped.txt"));
    EXPECT_EQ(contentOf("to/section0.txt"), "name = test\n");
    EXPECT_EQ(contentOf("to/section1.txt"), smallSchema());
}

TEST_F(ExtractCommandTest, WritesAnAlteredSectionButFails)
{
    pack();
    writeFile("out.kelvaron", contentOf("out.kelvaron").replace("name = test", "name = tess"));
    expectRefused(run({"extract", "out.kelvaron", "--index", "0", "-o", "one"}), 1,
                  "section 0 (device.txt) does not match its checksum");
    EXPECT_EQ(contentOf("one"), "name = tess\n");
    EXPECT_EQ(run({"extract", "out.kelvaron", "--index", "1"}).exitCode, 0);
    expectRefused(run({"extract", "out.kelvaron", "-o", "to"}), 1,
                  "out.kelvaron:24:1: error: section 0, ");
    EXPECT_EQ(contentOf("to/device.txt"), "name = tess\n");
}

TEST_F(ExtractCommandTest, RefusesAWrongNumberOrPlace)
{
    pack();
    expectRefused(run({"extract", "out.kelvaron", "--index", "3"}), 1, "has no section 3");
    expectRefused(run({"extract", "out.kelvaron", "--index", "-1"}), 2, "is not a section number");
    expectRefused(run({"extract", "out.kelvaron", "--index", "x"}), 2, "is not a section number");
    expectRefused(run({"extract", "out.kelvaron", "--index", "0", "--all"}), 2,
                  "cannot be used together");
    expectRefused(run({"extract", "out.kelvaron", "-o", "device.in/x"}), 1, "device.in/x: ");
    expectRefused(run({"extract", "out.kelvaron", "--index", "0", "-o", "no/where"}), 1,
                  "no/where: cannot be written");
    expectRefused(run({"extract", "absent"}), 1, "absent: cannot be read");
}
