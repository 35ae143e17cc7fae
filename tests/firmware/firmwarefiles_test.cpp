#include "firmware/firmwarefiles.h"

#include "CBGenerator/standardoutputcapture.h"
#include "firmware/flashertest.h"
#include "support/filesizelimit.h"

#include <QMap>

#include <stdexcept>

using FirmwareTool::FirmwareFiles;

class FirmwareFilesTest : public ::testing::Test
{
protected:
    /// Extracts a firmware file with these bytes; gives what was printed.
    std::string extract(const QByteArray& bytes, bool overwrite = false)
    {
        const QString path = firmwareFolder.filePath("v1.5.kelvaron");
        writeFile(path, bytes);
        const StandardOutputCapture output;
        FirmwareFiles::extract(path, overwrite);
        return output.text();
    }

    /// What stands in the working folder.
    static QStringList names() { return QDir().entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    const std::string image = ":020000040000FA\n:00000001FF\n";
    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
};

TEST_F(FirmwareFilesTest, KeepingProfilesUsesTheirDescription)
{
    EXPECT_EQ(extract(firmwareBundle().bytes()),
              "Checksums in bundle OK\nNot overwriting profiles\n");
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
    EXPECT_EQ(bytesOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = no\n");
    EXPECT_EQ(names(), QStringList({"device.txt", "device_overwrite.txt", "hexToFlash.hex",
                                    "v1.5.kelvaron"}));
}

TEST_F(FirmwareFilesTest, OverwritingProfilesUsesTheSameDescriptionTwice)
{
    EXPECT_EQ(extract(firmwareBundle().bytes(), true),
              "Checksums in bundle OK\nOverwriting Profiles\n");
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
    EXPECT_EQ(bytesOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareFilesTest, FilesOfAnEarlierFlashAreReplaced)
{
    for (const char* name : {"hexToFlash.hex", "device.txt", "device_overwrite.txt"}) {
        writeFile(name, "a much longer text of an earlier flash, which must not remain\n");
    }
    extract(firmwareBundle().bytes());
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
    EXPECT_EQ(bytesOf("device_overwrite.txt"), "overwrite = yes\n");
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = no\n");
}

TEST_F(FirmwareFilesTest, WrongChecksumIsOnlyReported)
{
    EXPECT_EQ(extract(firmwareBundle().wrongChecksum(2).bytes()),
              "Match failed!\nNot overwriting profiles\n");
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
}

// The copy of the firmware file

TEST_F(FirmwareFilesTest, FirmwareFileIsCopiedUnchanged)
{
    const QByteArray bytes =
        "ignored \xFF\r\n" + firmwareBundle().bytes().replace("\n", "\r\n") + "no line end";
    extract(bytes);
    EXPECT_EQ(bytesOf("v1.5.kelvaron"), bytes.toStdString());
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
}

TEST_F(FirmwareFilesTest, CopyThatIsThereIsNotOverwritten)
{
    writeFile("v1.5.kelvaron", "another\n");
    extract(firmwareBundle().bytes());
    EXPECT_EQ(bytesOf("v1.5.kelvaron"), "another\n");
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image); // of the chosen file
}

TEST_F(FirmwareFilesTest, FirmwareFileInTheWorkingFolderStaysAsItIs)
{
    const QByteArray bytes = firmwareBundle().bytes();
    writeFile("v1.5.kelvaron", bytes);
    FirmwareFiles::extract("v1.5.kelvaron", false);
    EXPECT_EQ(bytesOf("v1.5.kelvaron"), bytes.toStdString());
    FirmwareFiles::extract(QDir::current().absoluteFilePath("v1.5.kelvaron"), false);
    EXPECT_EQ(bytesOf("v1.5.kelvaron"), bytes.toStdString());
    EXPECT_EQ(bytesOf("hexToFlash.hex"), image);
}

// Parts that are missing: nothing asserts, and nothing of an earlier flash is left to be used

class MissingPartTest : public FirmwareFilesTest
{
protected:
    MissingPartTest()
    {
        for (const char* name : {"hexToFlash.hex", "device.txt", "device_overwrite.txt"}) {
            writeFile(name, "earlier\n");
        }
    }
};

TEST_F(MissingPartTest, FileThatIsNotThereGivesNothing)
{
    FirmwareFiles::extract(firmwareFolder.filePath("missing.kelvaron"), false);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(MissingPartTest, FolderGivesNothing)
{
    FirmwareFiles::extract(firmwareFolder.path(), true);
    EXPECT_EQ(names(), QStringList());
}

TEST_F(MissingPartTest, EmptyFileGivesNothing)
{
    extract("");
    EXPECT_EQ(names(), QStringList("v1.5.kelvaron"));
}

TEST_F(MissingPartTest, FileWithoutSectionsGivesNothing)
{
    extract("...\nVERSION = 1.5\n...\njust text\n");
    EXPECT_EQ(names(), QStringList("v1.5.kelvaron"));
}

TEST_F(MissingPartTest, ChecksumsAreNoPart)
{
    extract(BundleText().bytes());
    EXPECT_EQ(names(), QStringList("v1.5.kelvaron"));
}

TEST_F(MissingPartTest, BundleWithoutFirmwareGivesNoImage)
{
    extract(BundleText().section("device\n").section("schema\n").bytes());
    EXPECT_EQ(names(), QStringList({"device_overwrite.txt", "v1.5.kelvaron"}));
    EXPECT_EQ(bytesOf("device_overwrite.txt"), "device\n");
}

TEST_F(MissingPartTest, BundleWithoutFirmwareGivesADeviceWhenProfilesAreOverwritten)
{
    extract(BundleText().section("device\n").section("schema\n").bytes(), true);
    EXPECT_EQ(names(), QStringList({"device.txt", "device_overwrite.txt", "v1.5.kelvaron"}));
}

TEST_F(MissingPartTest, BundleWithoutTheKeepingDescriptionGivesNoDevice)
{
    extract(BundleText().section("device\n").section("schema\n").section("image\n").bytes());
    EXPECT_EQ(names(), QStringList({"device_overwrite.txt", "hexToFlash.hex", "v1.5.kelvaron"}));
    EXPECT_EQ(bytesOf("hexToFlash.hex"), "image\n");
}

TEST_F(MissingPartTest, OddNumberOfMarkersDoesNoHarm)
{
    for (int cut = 1; cut <= 9; ++cut) {
        QByteArray bytes;
        for (int marker = 0; marker < cut; ++marker) {
            bytes += BundleText::marker() + "line\n";
        }
        extract(bytes);
        QFile::remove("v1.5.kelvaron");
    }
}

TEST_F(MissingPartTest, EmptyPartsGiveEmptyFiles)
{
    extract(BundleText().section("").section("").section("").section("").bytes());
    EXPECT_EQ(bytesOf("hexToFlash.hex"), "");
    EXPECT_EQ(bytesOf("device.txt"), "");
}

TEST_F(MissingPartTest, ImageThatCannotBeRemovedStopsTheFlash)
{
    ASSERT_TRUE(QFile::remove("hexToFlash.hex"));
    ASSERT_TRUE(QDir().mkpath("hexToFlash.hex/content"));
    EXPECT_THROW(extract(firmwareBundle().bytes()), std::runtime_error);
    EXPECT_EQ(bytesOf("device.txt"), "earlier\n");
}

// After the flash

TEST_F(FirmwareFilesTest, FullDiskAtEveryByteLeavesWholeFilesOrNone)
{
    const QByteArray bundle = firmwareBundle().bytes();
    extract(bundle);
    QMap<QString, std::string> whole;
    for (const QString& name : names()) {
        whole.insert(name, bytesOf(name));
    }
    ASSERT_EQ(whole.size(), 4);
    for (int limit = 0; limit < bundle.size(); ++limit) {
        QFile::remove("v1.5.kelvaron");
        const FileSizeLimit fullDisk(static_cast<rlim_t>(limit));
        FirmwareFiles::extract(firmwareFolder.filePath("v1.5.kelvaron"), false);
        for (const QString& name : names()) {
            EXPECT_EQ(bytesOf(name), whole.value(name)) << limit;
            EXPECT_LE(static_cast<int>(bytesOf(name).size()), limit);
        }
    }
    EXPECT_EQ(names(), whole.keys().mid(0, 3)) << "all but the copy of the bundle found room";
}

TEST_F(FirmwareFilesTest, RestoredDescriptionIsTheOneForTransfers)
{
    extract(firmwareBundle().bytes());
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
    EXPECT_FALSE(QFile::exists("device_overwrite.txt"));
}

TEST_F(FirmwareFilesTest, RestoringAMissingDescriptionBringsItBack)
{
    writeFile("device_overwrite.txt", "overwrite = yes\n");
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(bytesOf("device.txt"), "overwrite = yes\n");
}

TEST_F(FirmwareFilesTest, WithoutAFlashNothingIsRestored)
{
    writeFile("device.txt", "installed\n");
    FirmwareFiles::restoreDeviceDescription();
    EXPECT_EQ(bytesOf("device.txt"), "installed\n");
    EXPECT_EQ(names(), QStringList("device.txt"));
}
