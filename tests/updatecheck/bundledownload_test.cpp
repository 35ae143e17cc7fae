// Fetching and saving a bundle.

#include "base/textfile.h"
#include "support/filesizelimit.h"
#include "support/gui/checkertest.h"
#include "support/thorough.h"

#include <map>

TEST_F(CheckerTest, BundleIsSavedUnderItsVersion)
{
    const QByteArray bundle = "ignored \xFF\r\n" + bundleOfVersion("1.10").replace("\n", "\r\n");
    server.answer("/b", {200, bundle});
    tellVersion("1.10", server.address() + "/b");
    fetchBundle();
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundle);
}

TEST_F(CheckerTest, BundleOfTheSameNameIsReplaced)
{
    writeFile("v1.10.kelvaron", "an older and longer text");
    writeFile("v1.9.kelvaron", "in use");
    server.answer("/b", {200, bundleOfVersion("1.10")});
    tellVersion("1.10", server.address() + "/b");
    fetchBundle();
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron", "v1.9.kelvaron"}));
    EXPECT_EQ(contentOf("v1.10.kelvaron"), bundleOfVersion("1.10"));
    EXPECT_EQ(contentOf("v1.9.kelvaron"), "in use");
}

TEST_F(CheckerTest, AnswerOfTheFirstRequestIsNotTakenForABundle)
{
    server.answer(infoPath, {200, "<i><current_version>1.10</current_version><download_link>"
                                      + server.address().toUtf8() + "/b</download_link></i>"});
    server.answer("/b", {200, "<!-- \n" + bundleOfVersion("1.10")});
    checker->downloadFirmwareInfo();
    ASSERT_TRUE(told->wait(patience));
    fetchBundle();
    expectSaved();
    EXPECT_EQ(told->size(), 1); // nor the bundle for version information
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
}

TEST_F(CheckerTest, BundleThatDoesNotComeWholeIsNotSaved)
{
    writeFile("v1.10.kelvaron", "as before");
    server.answer("/dropped", {200, QByteArray(100000, 'x'), Pace::AT_ONCE, 50000});
    for (const QString& link : {server.address() + "/dropped", server.address() + "/missing",
                                QString(), QString("not an address")}) {
        SCOPED_TRACE(link);
        failed->clear();
        tellVersion("1.10", link);
        fetchBundle();
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, AnswerThatIsNotASoundBundleIsNotSaved)
{
    const QByteArray sound = bundleOfVersion("1.10");
    const QByteArray gzip("\x1F\x8B\x08\x00\x00\x00\x00\x00\x00\x03\x4B\x4C", 12);
    const QByteArray firstSections = sound.left(sound.lastIndexOf(BundleText::marker()));
    const std::map<std::string, HttpServer::Answer> wrong = {
        {"empty", {200, ""}},
        {"a login page", {200, "<!DOCTYPE html><html><body>Log in, please</body></html>"}},
        {"a redirect", {302, "", Pace::AT_ONCE, -1, "Location: /elsewhere"}},
        {"half a gzip stream", {200, gzip, Pace::AT_ONCE, -1, "Content-Encoding: gzip"}},
        {"cut off in its checksums", {200, firstSections}},
        {"cut off in its schema", {200, sound.left(sound.indexOf("struct Cell"))}},
        {"without checksums", {200, sound.left(firstSections.lastIndexOf(BundleText::marker()))}},
        {"with a wrong checksum", {200, Samples::bundle().wrongChecksum(1).bytes()}},
        {"with a malformed key", {200, Samples::bundle().keyLine("no pair").bytes()}},
        {"for a newer editor",
         {200, Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0").bytes()}},
        {"with a schema that cannot be loaded", {200, Samples::bundle("no schema\n").bytes()}},
    };
    writeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10", server.address() + "/b");
    for (const auto& [name, answer] : wrong) {
        SCOPED_TRACE(name);
        failed->clear();
        server.answer("/b", answer);
        fetchBundle();
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, MissingLinkFails)
{
    read("<current_version>1.10</current_version>");
    fetchBundle();
    expectFailed();
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(server.paths().isEmpty());
}

TEST_F(CheckerTest, FolderInTheBundlesPlaceIsAnError)
{
    ASSERT_TRUE(QDir().mkdir("v1.10.kelvaron"));
    tellVersion("1.10");
    checker->on_firmwareDownloaded(bundleOfVersion("1.10"));
    expectFailed();
    EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
}

TEST_F(CheckerTest, WorkingFolderThatIsGoneIsAnError)
{
    ASSERT_TRUE(QDir().mkdir("working"));
    ASSERT_TRUE(QDir::setCurrent("working"));
    ASSERT_TRUE(QDir().rmdir(folder.path() + "/working"));
    tellVersion("1.10");
    checker->on_firmwareDownloaded(bundleOfVersion("1.10"));
    expectFailed();
}

TEST_F(CheckerTest, FullDiskKeepsTheOldBundle)
{
    writeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10");
    for (const int size : {100, 100000}) { // in the file's buffer, and beyond it
        failed->clear();
        {
            const FileSizeLimit fullDisk(64);
            checker->on_firmwareDownloaded(QByteArray(size, '\n') + bundleOfVersion("1.10"));
        }
        expectFailed();
        EXPECT_EQ(files(), QStringList({"v1.10.kelvaron"}));
        EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    }
}

TEST_F(CheckerTest, BundleFarTooLargeIsNotSaved)
{
    THOROUGH_ONLY();
    writeFile("v1.10.kelvaron", "as before");
    tellVersion("1.10");
    const QByteArray sound = bundleOfVersion("1.10");
    const QByteArray filler(static_cast<int>(TextFile::largestFile) - sound.size(), '\n');
    checker->on_firmwareDownloaded('\n' + filler + sound);
    expectFailed();
    EXPECT_EQ(contentOf("v1.10.kelvaron"), "as before");
    checker->on_firmwareDownloaded(filler + sound);
    EXPECT_EQ(contentOf("v1.10.kelvaron").size(), TextFile::largestFile);
}

TEST_F(CheckerTest, TextsThatAreNoDottedVersionNeverNameAFile)
{
    ASSERT_TRUE(QDir().mkpath("working/v"));
    ASSERT_TRUE(QDir::setCurrent("working"));
    for (const char* version :
         {"/../../outside", "/inside", "..", "/", "1.10/../../outside", "1 ", "\n", "x"}) {
        SCOPED_TRACE(version);
        failed->clear();
        tellVersion(version);
        checker->on_firmwareDownloaded(bundleOfVersion("1.10"));
        expectFailed();
    }
    EXPECT_EQ(files(), QStringList({"v"}));
    EXPECT_TRUE(QDir("v").isEmpty());
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({"working"}));
}

TEST_F(CheckerTest, VersionTooLongForAFileNameIsAnError)
{
    tellVersion(QString("1.").repeated(200) + "1");
    checker->on_firmwareDownloaded(bundleOfVersion("1.10"));
    expectFailed();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(CheckerTest, MissingVersionNamesTheFileJustV)
{
    read("<info/>");
    checker->on_firmwareDownloaded(bundleOfVersion("1.10"));
    expectSaved();
    EXPECT_EQ(files(), QStringList({"v.kelvaron"}));
}
