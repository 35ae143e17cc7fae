#include "firmware/firmwarefiles.h"

#include "support/filesizelimit.h"
#include "support/gui/flashertest.h"

#include <QMap>

#include <algorithm>
#include <stdexcept>

using FirmwareTool::FirmwareFiles;

class FirmwareFilesTest : public ::testing::Test
{
protected:
    /// Extracts a firmware file with these bytes; returns what was printed.
    std::string extract(const QByteArray& bytes, bool overwrite = false)
    {
        const QString path = firmwareFolder.filePath("v1.5.kelvaron");
        writeFile(path, bytes);
        const StandardOutputCapture output;
        lastResult = FirmwareFiles::extract(path, overwrite);
        return output.text();
    }

    /// The content of the working folder.
    static QStringList names() { return QDir().entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    using Extraction = FirmwareFiles::Extraction;

    Extraction lastResult = Extraction::DONE;
    const QByteArray image = ":020000040000FA\n:00000001FF\n";
    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
};

TEST_F(FirmwareFilesTest, KeepingProfilesUsesTheirDescription)
{
    EXPECT_EQ(extract(firmwareBundle().bytes()),
              "Checksums in bundle OK\nNot overwriting profiles\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
    EXPECT_EQ(contentOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(contentOf("device.txt"), "overwrite = no\n");
    EXPECT_EQ(names(), QStringList({"device.txt", "device_overwrite.txt", "hexToFlash.hex",
                                    "v1.5.kelvaron"}));
}

TEST_F(FirmwareFilesTest, OverwritingProfilesUsesTheSameDescriptionTwice)
{
    EXPECT_EQ(extract(firmwareBundle().bytes(), true),
              "Checksums in bundle OK\nOverwriting Profiles\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
    EXPECT_EQ(contentOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareFilesTest, FilesOfAnEarlierFlashAreReplaced)
{
    for (const char* name : {"hexToFlash.hex", "device.txt", "device_overwrite.txt"}) {
        writeFile(name, "a much longer text of an earlier flash, which must not remain\n");
    }
    extract(firmwareBundle().bytes());
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
    EXPECT_EQ(contentOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(contentOf("device.txt"), "overwrite = no\n");
}

TEST_F(FirmwareFilesTest, WrongChecksumIsOnlyReported)
{
    EXPECT_EQ(extract(firmwareBundle().wrongChecksum(2).bytes()),
              "Match failed!\nNot overwriting profiles\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
}

// The copy of the firmware file

TEST_F(FirmwareFilesTest, FirmwareFileIsCopiedUnchanged)
{
    const QByteArray bytes =
        "ignored \xFF\r\n" + firmwareBundle().bytes().replace("\n", "\r\n") + "no line end";
    extract(bytes);
    EXPECT_EQ(contentOf("v1.5.kelvaron"), bytes);
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
}

TEST_F(FirmwareFilesTest, CopyThatIsThereIsNotOverwritten)
{
    writeFile("v1.5.kelvaron", "another\n");
    extract(firmwareBundle().bytes());
    EXPECT_EQ(contentOf("v1.5.kelvaron"), "another\n");
    EXPECT_EQ(contentOf("hexToFlash.hex"), image); // of the chosen file
}

TEST_F(FirmwareFilesTest, FirmwareFileInTheWorkingFolderStaysAsItIs)
{
    const QByteArray bytes = firmwareBundle().bytes();
    writeFile("v1.5.kelvaron", bytes);
    FirmwareFiles::extract("v1.5.kelvaron", false);
    EXPECT_EQ(contentOf("v1.5.kelvaron"), bytes);
    FirmwareFiles::extract(QDir::current().absoluteFilePath("v1.5.kelvaron"), false);
    EXPECT_EQ(contentOf("v1.5.kelvaron"), bytes);
    EXPECT_EQ(contentOf("hexToFlash.hex"), image);
}

class FirmwareCopyTest : public FirmwareFilesTest
{
protected:
    /// Expects a flash of this bundle to begin without the bundle being copied.
    void expectNotCopied(const BundleText& bundle)
    {
        extract(bundle.bytes());
        EXPECT_EQ(lastResult, Extraction::DONE);
        EXPECT_EQ(contentOf("hexToFlash.hex"), image);
        EXPECT_FALSE(QFile::exists("v1.5.kelvaron"));
    }
};

TEST_F(FirmwareCopyTest, BundleWhoseSchemaEndsAStartIsNotCopied)
{
    expectNotCopied(firmwareBundle("not a schema\n"));
    expectNotCopied(firmwareBundle(Samples::globalStruct() + Samples::chemistry("};\n")));
}

TEST_F(FirmwareCopyTest, BundleForANewerEditorIsNotCopied)
{
    expectNotCopied(firmwareBundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0"));
    expectNotCopied(firmwareBundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "newest"));
}

TEST_F(FirmwareCopyTest, BundleForThisEditorIsCopied)
{
    extract(firmwareBundle().key("MIN_SOFTWARE_VERSION_REQUIRED", "0.99").bytes());
    EXPECT_TRUE(QFile::exists("v1.5.kelvaron"));
}

TEST_F(FirmwareCopyTest, BundleWithAMalformedKeyIsNotCopied)
{
    expectNotCopied(firmwareBundle().keyLine("no pair"));
}

TEST_F(FirmwareCopyTest, WrongChecksumsDoNotKeepABundleFromBeingCopied)
{
    extract(firmwareBundle().wrongChecksum(1).bytes());
    EXPECT_TRUE(QFile::exists("v1.5.kelvaron"));
}

// Files that cannot be flashed: nothing is deleted, written or copied

class UnfitFirmwareTest : public FirmwareFilesTest
{
protected:
    UnfitFirmwareTest()
    {
        for (const QString& name : earlier) {
            writeFile(name, "earlier\n");
        }
    }

    /// Expects this result, and the working folder as it was.
    void expectUnfit(const QByteArray& bytes, Extraction result, bool overwrite = false)
    {
        extract(bytes, overwrite);
        EXPECT_EQ(lastResult, result);
        expectNothingChanged();
    }

    void expectNothingChanged() const
    {
        EXPECT_EQ(names(), earlier);
        for (const QString& name : earlier) {
            EXPECT_EQ(contentOf(name), "earlier\n") << name;
        }
    }

    const QStringList earlier = {"device.txt", "device_overwrite.txt", "hexToFlash.hex"};
};

TEST_F(UnfitFirmwareTest, FileThatIsMissing)
{
    EXPECT_EQ(FirmwareFiles::extract(firmwareFolder.filePath("missing.kelvaron"), false),
              Extraction::IMAGE_MISSING);
    expectNothingChanged();
}

TEST_F(UnfitFirmwareTest, Folder)
{
    EXPECT_EQ(FirmwareFiles::extract(firmwareFolder.path(), true), Extraction::IMAGE_MISSING);
    expectNothingChanged();
}

TEST_F(UnfitFirmwareTest, FilesThatAreNotBundles)
{
    const QByteArray page = "<!DOCTYPE html><html><body>Log in, please</body></html>\n";
    for (const QByteArray& bytes :
         {QByteArray(), page, QByteArray("...\nVERSION = 1.5\n...\njust text\n"),
          BundleText().bytes()}) {
        SCOPED_TRACE(bytes);
        expectUnfit(bytes, Extraction::IMAGE_MISSING);
        expectUnfit(bytes, Extraction::IMAGE_MISSING, true);
    }
}

TEST_F(UnfitFirmwareTest, BundleWithoutAnImage)
{
    const BundleText withoutImage = BundleText().section("device\n").section("schema\n");
    expectUnfit(withoutImage.bytes(), Extraction::IMAGE_MISSING);
    expectUnfit(withoutImage.bytes(), Extraction::IMAGE_MISSING, true);
}

TEST_F(UnfitFirmwareTest, EmptyImageWouldLeaveTheChargerErased)
{
    const BundleText bundle = BundleText().section("device\n").section("schema\n").section("");
    expectUnfit(bundle.bytes(), Extraction::IMAGE_MISSING, true);
}

TEST_F(UnfitFirmwareTest, EmptyDeviceDescription)
{
    const BundleText bundle = BundleText().section("").section("schema\n").section("image\n");
    expectUnfit(bundle.bytes(), Extraction::DEVICE_DESCRIPTION_MISSING, true);
}

TEST_F(UnfitFirmwareTest, DescriptionThatKeepsProfilesIsNeededOnlyToKeepThem)
{
    const QByteArray bundle =
        BundleText().section("device\n").section("schema\n").section("image\n").bytes();
    expectUnfit(bundle, Extraction::DEVICE_DESCRIPTION_MISSING);
    extract(bundle, true);
    EXPECT_EQ(lastResult, Extraction::DONE);
    EXPECT_EQ(contentOf("hexToFlash.hex"), "image\n");
}

TEST_F(UnfitFirmwareTest, BundleCutOffAnywhereIsExtractedWholeOrNotAtAll)
{
    const QByteArray whole = firmwareBundle().bytes();
    for (int length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        extract(whole.left(length));
        if (lastResult != Extraction::DONE) {
            expectNothingChanged();
            continue;
        }
        EXPECT_EQ(contentOf("hexToFlash.hex"), image);
        EXPECT_EQ(contentOf("device_overwrite.txt"), "overwrite = yes\n");
        EXPECT_EQ(contentOf("device.txt"), "overwrite = no\n");
        for (const QString& name : earlier) {
            writeFile(name, "earlier\n");
        }
        QFile::remove("v1.5.kelvaron");
    }
    extract(whole);
    EXPECT_EQ(lastResult, Extraction::DONE);
}

TEST_F(UnfitFirmwareTest, OddNumberOfMarkersDoesNoHarm)
{
    for (int cut = 1; cut <= 7; ++cut) {
        QByteArray bytes;
        for (int marker = 0; marker < cut; ++marker) {
            bytes += BundleText::marker() + "line\n";
        }
        expectUnfit(bytes,
                    cut < 7 ? Extraction::IMAGE_MISSING : Extraction::DEVICE_DESCRIPTION_MISSING);
    }
}

TEST_F(UnfitFirmwareTest, ImageThatCannotBeRemovedStopsTheFlash)
{
    ASSERT_TRUE(QFile::remove("hexToFlash.hex"));
    ASSERT_TRUE(QDir().mkpath("hexToFlash.hex/content"));
    EXPECT_THROW(extract(firmwareBundle().bytes()), std::runtime_error);
    EXPECT_EQ(contentOf("device.txt"), "earlier\n");
    EXPECT_EQ(contentOf("device_overwrite.txt"), "earlier\n");
}

// After the flash

TEST_F(FirmwareFilesTest, FullDiskLeavesWholeFilesAndTheDescriptionThatTransfersNeed)
{
    const QByteArray bundle = firmwareBundle().bytes();
    extract(bundle);
    QMap<QString, QByteArray> whole;
    for (const QString& name : names()) {
        whole.insert(name, contentOf(name));
    }
    ASSERT_EQ(whole.size(), 4);
    const auto largest = static_cast<int>(std::max(whole["device.txt"].size(), image.size()));
    QList<int> limits = {bundle.size() - 1};
    for (int limit = 0; limit <= largest; ++limit) {
        limits.append(limit);
    }
    for (const int limit : limits) {
        SCOPED_TRACE(limit);
        for (const QString& name : names()) {
            ASSERT_TRUE(QFile::remove(name));
        }
        writeFile("device.txt", "in use\n");
        {
            const FileSizeLimit fullDisk(limit);
            FirmwareFiles::extract(firmwareFolder.filePath("v1.5.kelvaron"), false);
        }
        for (const QString name : {"hexToFlash.hex", "device.txt", "v1.5.kelvaron"}) {
            const bool hasRoom = static_cast<int>(whole.value(name).size()) <= limit;
            EXPECT_EQ(contentOf(name), hasRoom ? whole.value(name) : QByteArray("(no file)"))
                << name;
        }
        FirmwareFiles::restoreDeviceDescription();
        const bool hadRoom = static_cast<int>(whole.value("device_overwrite.txt").size()) <= limit;
        EXPECT_EQ(contentOf("device.txt"), hadRoom ? "overwrite = yes\n" : "in use\n");
    }
}

TEST_F(FirmwareFilesTest, RestoredDescriptionIsTheOneForTransfers)
{
    extract(firmwareBundle().bytes());
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
    EXPECT_FALSE(QFile::exists("device_overwrite.txt"));
}

TEST_F(FirmwareFilesTest, RestoringAMissingDescriptionBringsItBack)
{
    writeFile("device_overwrite.txt", "overwrite = yes\n");
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(contentOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareFilesTest, WithoutAFlashNothingIsRestored)
{
    writeFile("device.txt", "installed\n");
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(contentOf("device.txt"), "installed\n");
    EXPECT_EQ(names(), QStringList("device.txt"));
}
