#include "KelvaronBundle/kelvaronbundle.h"
#include "support/bundleprogram.h"
#include "support/filesizelimit.h"

#include <QFileInfo>

namespace
{
class PackCommandTest : public BundleProgramTest
{
protected:
    void expectNothingWritten(const QStringList& more, int exitCode, const QByteArray& words)
    {
        expectRefused(run(packArguments(more)), exitCode, words);
        EXPECT_FALSE(exists("out.kelvaron"));
    }
};
} // namespace

TEST_F(PackCommandTest, WritesKeysSectionsAndChecksums)
{
    writeFile("device.in", "one\ntwo\n");
    writeFile("schema.in", "three\n");
    packForced({"--key", "VERSION=1.2.0", "--key", "MIN_SOFTWARE_VERSION_REQUIRED=0.9"});

    EXPECT_EQ(contentOf("out.kelvaron"), "...\n"
                                         "VERSION = 1.2.0\n"
                                         "MIN_SOFTWARE_VERSION_REQUIRED = 0.9\n"
                                         "...\n"
                                         "/\\/\\/\\ device.txt /\\/\\/\\\n"
                                         "one\n"
                                         "two\n"
                                         "/\\/\\/\\ device.txt /\\/\\/\\\n"
                                         "/\\/\\/\\ kelvaron_chemistries.cb /\\/\\/\\\n"
                                         "three\n"
                                         "/\\/\\/\\ kelvaron_chemistries.cb /\\/\\/\\\n"
                                         "/\\/\\/\\ checksums /\\/\\/\\\n"
                                             + BundleText::md5("one\ntwo\n") + "\n"
                                             + BundleText::md5("three\n")
                                             + "\n/\\/\\/\\ checksums /\\/\\/\\\n");
}

TEST_F(PackCommandTest, TheEditorsReaderAcceptsWhatItWrites)
{
    writeFile("hexToFlash.hex", ":00000001FF\n");
    pack({"--key", "VERSION=1.2.0", "--file", "hexToFlash.hex", "--file", "keep.txt=device.in"});

    KelvaronBundle bundle(pathOf("out.kelvaron"));
    bundle.parseKeyValuePairs();
    EXPECT_EQ(bundle.valueFromKey("VERSION"), "1.2.0");
    EXPECT_TRUE(bundle.parseBundle());
    ASSERT_EQ(bundle.getNumFiles(), 5);
    EXPECT_EQ(bundle.getFile(1).toUtf8(), smallSchema());
    EXPECT_EQ(bundle.getFile(2), ":00000001FF\n");
    EXPECT_TRUE(contains(bundle.getMarker(2), " hexToFlash.hex "));
    EXPECT_EQ(bundle.getFile(3), "name = test\n");
    EXPECT_TRUE(contains(bundle.getMarker(3), " keep.txt "));
}

TEST_F(PackCommandTest, DropsCarriageReturnsAndEndsTheLastLine)
{
    writeFile("device.in", "one\r\ntwo");
    pack();
    KelvaronBundle bundle(pathOf("out.kelvaron"));
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getFile(0), "one\ntwo\n");
}

TEST_F(PackCommandTest, KeepsEmptyFilesBlankLinesAndLettersBeyondAscii)
{
    writeFile("device.in", "");
    writeFile("schema.in", "\n\n\xC2\xB0"
                           "C \xF0\x9F\x94\x8B\n\n");
    packForced();
    KelvaronBundle bundle(pathOf("out.kelvaron"));
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getFile(0), "");
    EXPECT_EQ(bundle.getFile(1).toUtf8(), "\n\n\xC2\xB0"
                                          "C \xF0\x9F\x94\x8B\n\n");
}

TEST_F(PackCommandTest, LinesOfDotsInAFileOpenNoKeyBlock)
{
    writeFile("device.in", "...\nVERSION = 9\n...\n");
    pack({});
    KelvaronBundle bundle(pathOf("out.kelvaron"));
    bundle.parseKeyValuePairs();
    EXPECT_EQ(bundle.valueFromKey("VERSION"), "");
    EXPECT_TRUE(bundle.parseBundle());
}

TEST_F(PackCommandTest, TheSameInputGivesTheSameBytes)
{
    pack();
    const QByteArray first = contentOf("out.kelvaron");
    pack();
    EXPECT_EQ(contentOf("out.kelvaron"), first);
}

TEST_F(PackCommandTest, FullDiskIsAnErrorAndKeepsTheOlderBundle)
{
    pack();
    const QByteArray older = contentOf("out.kelvaron");
    writeFile("device.in", "name = another\n");
    for (const int limit : {0, 1, older.size() / 2}) {
        SCOPED_TRACE(limit);
        const FileSizeLimit fullDisk(limit); // of this process and its children
        expectRefused(run(packArguments()), 1, "out.kelvaron: cannot be written: File too large");
        EXPECT_EQ(contentOf("out.kelvaron"), older);
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), 3);
}

TEST_F(PackCommandTest, RefusesAMissingOption)
{
    expectRefused(run({"pack", "--device", "device.in", "--schema", "schema.in"}), 2, "--output");
    expectRefused(run({"pack", "-o", "out.kelvaron", "--schema", "schema.in"}), 2, "--device");
    expectRefused(run({"pack", "-o", "out.kelvaron", "--device", "device.in"}), 2, "--schema");
    EXPECT_FALSE(exists("out.kelvaron"));
}

TEST_F(PackCommandTest, RefusesAnOptionGivenTwice)
{
    expectNothingWritten({"--device", "device.in"}, 2, "--device is given twice");
    expectNothingWritten({"-o", "other.kelvaron"}, 2, "--output is given twice");
    EXPECT_FALSE(exists("other.kelvaron"));
}

TEST_F(PackCommandTest, RefusesAnUnreadableFile)
{
    expectNothingWritten({"--file", "absent.txt"}, 1, "absent.txt: cannot be read");
    expectNothingWritten({"--file", "here=."}, 1, ".: is a directory");
}

TEST_F(PackCommandTest, RefusesAMarkerLineInsideAFile)
{
    writeFile("further.in", "fine\n/\\/\\/\\ x /\\/\\/\\\n");
    expectNothingWritten({"--file", "further.in"}, 1, "further.in: line 2");
    writeFile("further.in", "/\\/\\/\\/\\/\\/\\\r\n");
    expectNothingWritten({"--file", "further.in"}, 1, "further.in: line 1");
}

TEST_F(PackCommandTest, TakesLinesThatOnlyResembleAMarker)
{
    writeFile("device.in", "/\\/\\/\\\n /\\/\\/\\ x /\\/\\/\\\n/\\/\\/\\ x /\\/\\/\\ \n");
    pack();
    KelvaronBundle bundle(pathOf("out.kelvaron"));
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getNumFiles(), 3);
}

TEST_F(PackCommandTest, RefusesWhatIsNoText)
{
    writeFile("further.in", QByteArray("a\0b\n", 4));
    expectNothingWritten({"--file", "further.in"}, 1, "further.in: is not a text");
    writeFile("further.in", "caf\xE9\n");
    expectNothingWritten({"--file", "further.in"}, 1, "further.in: is not UTF-8 text");
    writeFile("further.in", "cut off \xC2");
    expectNothingWritten({"--file", "further.in"}, 1, "further.in: is not UTF-8 text");
}

TEST_F(PackCommandTest, RefusesKeysThatTheEditorCouldNotRead)
{
    for (const char* pair :
         {"NAME", "=1", "NAME=", "MY NAME=x", "NAME=a b", "NAME=1-2", "A=b=c", "K\xE2\x82\xAC=1"}) {
        expectNothingWritten({"--key", pair}, 2, "is not KEY=VALUE");
    }
    expectNothingWritten({"--key", "NAME=1", "--key", "NAME=2"}, 2, "NAME is given twice");
}

TEST_F(PackCommandTest, RefusesAVersionThatIsNotDotted)
{
    for (const char* version : {"v1.2", "1..2", "1.2.", "one"}) {
        expectNothingWritten({"--key", QString("VERSION=%1").arg(version)}, 2,
                             "is not a dotted version");
        expectNothingWritten({"--key", QString("MIN_SOFTWARE_VERSION_REQUIRED=%1").arg(version)}, 2,
                             "is not a dotted version");
    }
}

TEST_F(PackCommandTest, RefusesASectionWithoutAUsableName)
{
    expectNothingWritten({"--file", "=device.in"}, 2, "usable section name");
    expectNothingWritten({"--file", "a/b=device.in"}, 2, "usable section name");
    expectNothingWritten({"--file", "..=device.in"}, 2, "usable section name");
    expectNothingWritten({"--file", "a\nb=device.in"}, 2, "usable section name");
}

TEST_F(PackCommandTest, AFailureLeavesTheOlderBundleAlone)
{
    writeFile("out.kelvaron", "older");
    expectRefused(run(packArguments({"--file", "absent.txt"})), 1, "absent.txt");
    EXPECT_EQ(contentOf("out.kelvaron"), "older");
}

TEST_F(PackCommandTest, ReportsAnOutputThatCannotBeWritten)
{
    expectRefused(run({"pack", "-o", "nowhere/out.kelvaron", "--device", "device.in", "--schema",
                       "schema.in"}),
                  1, "nowhere/out.kelvaron: cannot be written");
    ASSERT_TRUE(QDir(folder.path()).mkdir("taken"));
    expectRefused(run({"pack", "-o", "taken", "--device", "device.in", "--schema", "schema.in"}), 1,
                  "taken: cannot be written");
    EXPECT_TRUE(QFileInfo(pathOf("taken")).isDir());
}

TEST_F(PackCommandTest, RefusesAHeaderWithErrorsAndNamesThem)
{
    writeFile("out.kelvaron", "older");
    writeFile("schema.in", smallSchema().replace("\"Low\"", "\"L,ow\""));
    const ProgramRun packed = run(packArguments());
    expectRefused(packed, 1, "schema.in:12:49: error: a comma splits \"Low\"");
    expectRefused(packed, 1,
                  "kelvaron-profiles: schema.in: 1 error in the settings header, nothing "
                  "was written; correct the header, or pack it as it is with --force\n");
    EXPECT_EQ(contentOf("out.kelvaron"), "older");
}

TEST_F(PackCommandTest, PacksAHeaderWithErrorsWhenItIsForced)
{
    const QByteArray schema = smallSchema().replace("\"Low\"", "\"L,ow\"");
    writeFile("schema.in", schema);
    const ProgramRun packed = run(packArguments({"--force"}));
    EXPECT_EQ(packed.exitCode, 0);
    EXPECT_TRUE(contains(packed.errors, "schema.in:12:49: error: "));
    KelvaronBundle bundle(pathOf("out.kelvaron"));
    EXPECT_TRUE(bundle.parseBundle());
    EXPECT_EQ(bundle.getFile(1).toUtf8(), schema);
}

TEST_F(PackCommandTest, WarningsDoNotKeepAHeaderFromBeingPacked)
{
    writeFile("schema.in", smallSchema().replace("A, 3,", "A, 10,"));
    pack();
    EXPECT_TRUE(exists("out.kelvaron"));
}
