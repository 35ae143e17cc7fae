// Files that are not as expected: huge, empty, not text, or a folder. The list is kept, the user gets
// a message, and memory use stays small.

#include "applicationglobalmap.h"
#include "base/textfile.h"
#include "support/gui/damagedfilestest.h"
#include "support/gui/memory.h"

#include <QElapsedTimer>

TEST_F(DamagedFilesTest, AGigabyteLongLineInAProfileFileIsARefusedFile)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("saved_profiles/huge.xml", "<KelvaronProfiles><profile><title>", gigabyte);
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("XML", "huge.xml", "Replace Profiles", xmlReadError);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 100 * mebibyte);
    EXPECT_EQ(document(), before);
    EXPECT_FALSE(QFile::exists(pathOf("backup_before_replace.xml")));
}

TEST_F(DamagedFilesTest, TheLongestLineThatIsReadHoldsNobodyUp)
{
    startWithTwoProfiles();
    QByteArray text = "<KelvaronProfiles><profile><chemistry>Lithium Ion</chemistry><title>";
    text += QByteArray(static_cast<int>(TextFile::largestFile) - text.size(), 'x');
    writeFile("saved_profiles/long.xml", text);
    const QByteArray before = document();
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("XML", "long.xml", "Add Profiles", xmlBroken);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 500 * mebibyte);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AGigabyteLongLineInAnImageIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("saved_profiles/huge.hex", ":10", gigabyte);
    const PeakMemory memory;
    QElapsedTimer timer;
    timer.start();
    load("HEX", "huge.hex", "Add Profiles", hexReadError);
    EXPECT_LT(timer.elapsed(), patience);
    EXPECT_LT(memory.grown(), 100 * mebibyte);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AGigabyteLongLineInTheNewestBundleKeepsTheSchemaAndIsTold)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeHuge("v9.kelvaron", "...\n", gigabyte);
    {
        DialogScript script;
        expectBundleNotRead(script, "v9.kelvaron");
        const PeakMemory memory;
        QElapsedTimer timer;
        timer.start();
        window->reloadBundle();
        EXPECT_LT(timer.elapsed(), patience);
        EXPECT_LT(memory.grown(), 100 * mebibyte);
        EXPECT_EQ(document(), before);
        window.reset();
        expectBundleNotRead(script, "v9.kelvaron");
        start();
    }
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AFolderInPlaceOfTheSchemaKeepsTheOneInUse)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    ASSERT_TRUE(QFile::remove(pathOf("kelvaron_chemistries.cb")));
    ASSERT_TRUE(QDir().mkpath(pathOf("kelvaron_chemistries.cb/inside")));
    {
        DialogScript script;
        script.expectMessage("Installation Error",
                             "The file kelvaron_chemistries.cb could not be found. Please try "
                             "reinstalling the program.");
        window->reloadBundle();
    }
    EXPECT_EQ(document(), before);
    makeProfile("Three");
    EXPECT_EQ(list()->count(), 3);
}

TEST_F(DamagedFilesTest, EmptyFilesBringNothingAndCostNothing)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeFile("saved_profiles/empty.xml", "");
    writeFile("saved_profiles/empty.hex", "");
    load("XML", "empty.xml", "Replace Profiles", xmlBroken);
    EXPECT_EQ(document(), before);
    load("HEX", "empty.hex", "Add Profiles", hexReadError);
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AnEmptyNewestBundleKeepsTheSchema)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    writeFile("v9.kelvaron", "");
    {
        DialogScript script;
        expectBundleNotRead(script, "v9.kelvaron", "not a complete Kelvaron Bundle");
        window->reloadBundle();
        EXPECT_EQ(document(), before);
        window.reset();
    }
    DialogScript script;
    expectBundleNotRead(script, "v9.kelvaron", "not a complete Kelvaron Bundle");
    start();
    script.finish();
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AnEmptyUploaderFailsTheTransfer)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("");
    trigger(command("actionWriteProfiles"));
    DialogScript script;
    script.expectTransferFailure();
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AnEmptyFileFromTheChargerIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("#!/bin/sh\nfor last; do :; done; : > \"$last\"\n");
    trigger(command("actionReadProfiles"));
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    script.expectMessage("Import from HEX status", hexReadError);
    script.expectResetQuestion();
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, AFolderInPlaceOfTheFileFromTheChargerIsAReadError)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    installUploader("#!/bin/sh\n");
    ASSERT_TRUE(QDir().mkdir(pathOf("downloadedProfiles.hex")));
    trigger(command("actionReadProfiles"));
    DialogScript script;
    script.expectAppendQuestion("Add Profiles");
    script.expectMessage("Import from HEX status", hexReadError);
    script.expectResetQuestion();
    transfer();
    EXPECT_EQ(document(), before);
}

TEST_F(DamagedFilesTest, BytesThatAreNoUtf8InABundleDoNoHarm)
{
    startWithTwoProfiles();
    const QByteArray before = document();
    QFile demo(pathOf("v1.0.0.kelvaron"));
    ASSERT_TRUE(demo.open(QIODevice::ReadOnly));
    QByteArray bytes = demo.readAll();
    ASSERT_TRUE(bytes.contains("VERSION=1.0.0") || bytes.contains("VERSION = 1.0.0"));
    bytes.replace("1.0.0", "1.5.0");
    const int unit = bytes.indexOf("\"V\"");
    ASSERT_GT(unit, 0);
    bytes.replace(unit + 1, 1, "\xC3\x28\xFF\x80");
    writeFile("v1.5.0.kelvaron", bytes);
    {
        const DialogScript nothing;
        window->reloadBundle();
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.5.0");
        EXPECT_EQ(document(), before);
        window.reset();
        start();
    }
    makeProfile("Three");
    EXPECT_EQ(rowTitle(0), "Three");
}

TEST_F(DamagedFilesTest, AFileInPlaceOfTheFolderForProfilesCostsOnlyThatFolder)
{
    writeFile("saved_profiles", "");
    startWithTwoProfiles();
    QTemporaryDir folder;
    DialogScript script;
    script.thenDo([&folder](QWidget& dialog) {
        auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        typeOver(name, folder.filePath("mine.xml"));
        QTest::keyClick(name, Qt::Key_Return);
    });
    script.expectExported("XML");
    trigger(command("actionExportXML"));
    EXPECT_TRUE(QFile::exists(folder.filePath("mine.xml")));
}
