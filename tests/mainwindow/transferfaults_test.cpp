// Transfers with a charger, a cable, an uploader or a file that fails.

#include "support/gui/transfertest.h"

#include <QFileInfo>

TEST_F(TransferTest, FailedEraseNeverPrograms)
{
    makeProfiles(2);
    setFaults("erase.exit-code = 1\n");
    openWriter();
    script->expectTransferFailure();
    transfer();
    EXPECT_EQ(runs(), "-E");
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_TRUE(contentOf(uploadFile).trimmed().endsWith(":00000001FF"));
}

TEST_F(TransferTest, FailedProgrammingLeavesTheListAndTheFile)
{
    makeProfiles(2);
    setFaults("write.exit-code = 1\n");
    openWriter();
    script->expectTransferFailure();
    transfer();
    EXPECT_EQ(runs(), "-E -w");
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
    EXPECT_TRUE(contentOf(uploadFile).trimmed().endsWith(":00000001FF"));
}

TEST_F(TransferTest, FailedReadLeavesTheListAndTheEarlierFile)
{
    makeProfiles(2);
    writeList();
    openReader();
    script->expectAppendQuestion("Replace Profiles");
    expectRead();
    transfer();
    const QByteArray earlier = contentOf(downloadFile);
    makeProfile("Torch");
    setFaults("read.exit-code = 1\n");
    openReader();
    script->expectTransferFailure();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Torch"}));
    EXPECT_EQ(contentOf(downloadFile), earlier);
}

TEST_F(TransferTest, CrashingUploaderIsToldOnceAndChangesNothing)
{
    makeProfiles(2);
    writeList();
    for (const char* step : {"erase", "write", "read"}) {
        setFaults(QByteArray(step) + ".crash = yes\n");
        open(step == QByteArray("read") ? "actionReadProfiles" : "actionWriteProfiles");
        script->expectTransferFailure();
        transfer();
        EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"})) << step;
    }
}

TEST_F(TransferTest, UnfitUploaderIsToldAndChangesNothing)
{
    makeProfiles(2);
    ASSERT_TRUE(QFile::setPermissions(uploader(), QFile::ReadOwner)); // not executable
    for (const bool isMissing : {false, true}) {
        if (isMissing) {
            ASSERT_TRUE(QFile::remove(uploader()));
        }
        for (const char* action : {"actionWriteProfiles", "actionReadProfiles"}) {
            open(action);
            script->expectTransferFailure();
            transfer();
            EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2"}));
        }
    }
    EXPECT_TRUE(contentOf(uploadFile).trimmed().endsWith(":00000001FF"));
    EXPECT_FALSE(QFileInfo::exists(pathOf(downloadFile)));
}

TEST_F(TransferTest, ChangedByteInAProfileIsAChecksumError)
{
    makeProfiles(allowed);
    writeList();
    setFaults("read.garble = data\n");
    openReader();
    script->expectAppendQuestion("Add Profiles");
    script->expectHexImportError(" (Checksum)");
    expectRead();
    transfer();
    EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Cell 3"}));
}

TEST_F(TransferTest, ReplacedListStaysEmptyWhenTheReadFileIsDamaged)
{
    makeProfiles(allowed);
    writeList();
    setFaults("read.garble = data\n");
    openReader();
    script->expectAppendQuestion("Replace Profiles");
    script->expectHexImportError(" (Checksum)");
    expectRead();
    transfer();
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(TransferTest, DamagedLinesOfTheReadFileAreAReadError)
{
    makeProfiles(allowed);
    writeList();
    for (const char* fault : {"read.garble = checksum\n", "read.truncate = yes\n"}) {
        setFaults(fault);
        openReader();
        script->expectAppendQuestion("Add Profiles");
        script->expectHexImportError("");
        expectRead();
        transfer();
        EXPECT_EQ(titles(), QStringList({"Cell 1", "Cell 2", "Cell 3"})) << fault;
    }
}

TEST_F(TransferTest, FileThatCannotBeWrittenStopsTheTransfer)
{
    makeProfiles(1);
    ASSERT_TRUE(QDir().mkdir(pathOf(uploadFile)));
    script = std::make_unique<DialogScript>();
    script->expectMessage("Error while uploading!",
                          "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionWriteProfiles"));
    script.reset();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(runs(), "");
}

TEST_F(TransferTest, ProfileThatTheSchemaDoesNotKnowIsATypeError)
{
    makeProfiles(1);
    writeList();
    window.reset();
    installBundle("1.2", smallSchema(7));
    start();
    openReader();
    script->expectHexImportError(" (Invalid Type Field)");
    expectRead();
    transfer();
    EXPECT_EQ(list()->count(), 0);
}

TEST_F(TransferTest, UnpluggedCableFails)
{
    makeProfiles(1);
    setFaults("absent-port = /dev/ttyKelvaronDemo\n");
    openWriter();
    script->expectTransferFailure();
    transfer();
    EXPECT_EQ(runs(), "-E");
}

TEST_F(TransferTest, WindowMayCloseWhileTheUploaderHangs)
{
    makeProfiles(1);
    setFaults("erase.stall = yes\n");
    openWriter();
    clickOn(childNamed<QPushButton>(dialog(), "okButton"));
    ASSERT_TRUE(waitFor([this] { return runs() == "-E"; }));
    QTest::keyClick(dialog(), Qt::Key_Escape);
    flushDeletions();
    EXPECT_EQ(dialog(), nullptr);
    script.reset();
    window.reset(); // ends the run that hangs
    EXPECT_EQ(runs(), "-E");
}
