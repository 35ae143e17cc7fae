#include "CBGenerator/generator.h"
#include "support/filesizelimit.h"
#include "support/installationtest.h"

#include <csignal>

using Outcome = Installation::Outcome;
using File = Installation::File;

TEST_F(InstallationTest, FolderBesideTheProgramBecomesTheWorkingDirectory)
{
    EXPECT_EQ(QFileInfo(QDir::currentPath()), QFileInfo(filesFolder));
}

TEST_F(InstallationTest, WithoutTheFolderTheWorkingDirectoryStays)
{
    const QTemporaryDir elsewhere;
    const QString before = QDir::currentPath();
    EXPECT_FALSE(Installation::enter(elsewhere.path()));
    EXPECT_EQ(QDir::currentPath(), before);
}

TEST_F(InstallationTest, FileInPlaceOfTheFolderIsNoFolder)
{
    const QTemporaryDir elsewhere;
    ::writeFile(elsewhere.filePath(Installation::folderName), "");
    EXPECT_FALSE(Installation::enter(elsewhere.path()));
}

TEST_F(InstallationTest, WithoutABundleNothingIsInUse)
{
    writeFile("v0.kelvaron", Samples::bundle().bytes());
    EXPECT_FALSE(installation.chooseBundle());
    EXPECT_EQ(installation.bundleFileName(), "");
}

TEST_F(InstallationTest, ExtractsTheFilesOfTheBundleInUse)
{
    writeBundle("v1.2.kelvaron");
    EXPECT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_EQ(installation.bundleFileName(), "v1.2.kelvaron");
    EXPECT_EQ(installation.bundleVersion(), "1.2");
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(InstallationTest, EditorThatIsTooOldExtractsNothing)
{
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0"));
    EXPECT_EQ(extractNewest(), Outcome::EDITOR_TOO_OLD);
    EXPECT_EQ(installation.requiredVersion().toString(), "1.0");
    EXPECT_FALSE(exists("device.txt"));
    EXPECT_FALSE(exists("kelvaron_chemistries.cb"));
}

TEST_F(InstallationTest, EditorOfTheRequiredVersionIsNewEnough)
{
    for (const char* version : {"0.99", "0.9", "0.99.0"}) {
        const bool isAsked = QByteArray(version) == "0.99.0"; // one more part makes it the greater
        writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", version));
        EXPECT_EQ(extractNewest(), isAsked ? Outcome::EDITOR_TOO_OLD : Outcome::EXTRACTED)
            << version;
    }
    writeBundle("v1.kelvaron", Samples::bundle().key("MIN_SOFTWARE_VERSION_REQUIRED", ""));
    EXPECT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_EQ(installation.requiredVersion().toString(), "0");
}

TEST_F(InstallationTest, WrongChecksumsDoNotCount)
{
    writeBundle("v1.kelvaron", Samples::bundle().wrongChecksum(1));
    EXPECT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(InstallationTest, LargeFileIsNotReadAndSaysSo)
{
    writeBundle("v1.kelvaron");
    ASSERT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_FALSE(installation.isBundleTooLarge());
    writeFile("v2.kelvaron", "");
    ASSERT_TRUE(QFile::resize("v2.kelvaron", 1LL << 32));
    EXPECT_EQ(extractNewest(), Outcome::BUNDLE_NOT_READ);
    EXPECT_TRUE(installation.isBundleTooLarge());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(InstallationTest, FullDiskKeepsBothFilesOfTheOldBundle)
{
    writeBundle("v1.kelvaron");
    ASSERT_EQ(extractNewest(), Outcome::EXTRACTED);
    const QByteArray newer = "// newer\n" + Samples::schema();
    writeBundle("v2.kelvaron", Samples::bundle(newer, "name = newer\n"));
    {
        const FileSizeLimit disk(100); // room for one of them
        EXPECT_EQ(extractNewest(), Outcome::FILES_NOT_WRITTEN);
    }
    EXPECT_EQ(contentOf("device.txt"), Samples::device());
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), Samples::schema());
}

TEST_F(InstallationTest, FilesThatAreUpToDateNeedNoRoomOnTheDisk)
{
    writeBundle("v1.kelvaron");
    ASSERT_EQ(extractNewest(), Outcome::EXTRACTED);
    const FileSizeLimit disk(0);
    EXPECT_EQ(extractNewest(), Outcome::EXTRACTED);
}

TEST_F(InstallationTest, FirstMissingFileIsReported)
{
    EXPECT_EQ(Installation::firstMissing(), File::SCHEMA);
    ASSERT_TRUE(QFile::remove(BuildConstants::uploaderFileName));
    EXPECT_EQ(Installation::firstMissing(), File::SCHEMA);
    writeFile("kelvaron_chemistries.cb", "");
    EXPECT_EQ(Installation::firstMissing(), File::UPLOADER);
    writeFile(BuildConstants::uploaderFileName, "");
    EXPECT_EQ(Installation::firstMissing(), File::DEVICE);
    writeFile("device.txt", "");
    EXPECT_EQ(Installation::firstMissing(), File::NONE);
}

TEST_F(InstallationTest, FolderInPlaceOfAFileIsAMissingFile)
{
    writeFile("kelvaron_chemistries.cb", "");
    ASSERT_TRUE(QDir().mkdir("device.txt"));
    EXPECT_EQ(Installation::firstMissing(), File::DEVICE);
}

TEST_F(InstallationTest, SavedProfilesFolderIsMadeOnce)
{
    Installation::makeSavedProfilesFolder();
    writeFile("saved_profiles/mine.xml", "mine");
    Installation::makeSavedProfilesFolder();
    EXPECT_EQ(contentOf("saved_profiles/mine.xml"), "mine");
}

TEST_F(InstallationTest, SchemaIsThatOfTheExtractedHeader)
{
    writeBundle("v1.kelvaron");
    ASSERT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_EQ(installation.loadSchema()->getChemistrySettings().size(), 1);
}

using InstallationDeathTest = InstallationTest;

TEST_F(InstallationDeathTest, MalformedSchemaBlamesTheBundle)
{
    writeBundle("v1.kelvaron", Samples::bundle(Samples::globalStruct()));
    ASSERT_EQ(extractNewest(), Outcome::EXTRACTED);
    EXPECT_EXIT(installation.loadSchema(), ::testing::KilledBySignal(SIGABRT),
                "chemistrySettings.size\\(\\) != 0");
}
