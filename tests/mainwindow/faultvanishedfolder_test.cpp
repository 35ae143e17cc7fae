// The working folder disappears while the program runs, as with a memory stick that is removed.

#include "support/gui/damagedfilestest.h"

namespace
{
/// The working folder disappears while the program runs, as with a memory stick that is removed.
class VanishedFolderTest : public DamagedFilesTest
{
protected:
    VanishedFolderTest()
    {
        startWithTwoProfiles();
        EXPECT_TRUE(window->findChild<XMLManager*>()->exportToXML(elsewhere.filePath("list.xml")));
        makeProfile("Three");
        before = document();
        EXPECT_TRUE(QDir(pathOf("")).removeRecursively());
    }

    ~VanishedFolderTest() override
    {
        EXPECT_EQ(document(), before);
        EXPECT_FALSE(QFile::exists(pathOf("")));
    }

    QTemporaryDir elsewhere;
    QByteArray before;
};
} // namespace

TEST_F(VanishedFolderTest, WritingToTheChargerDoesNotBegin)
{
    DialogScript script;
    script.expectMessage("Error while uploading!",
                         "An error occured while exporting profiles to HEX. Please try again.");
    trigger(command("actionWriteProfiles"));
    EXPECT_EQ(window->findChild<UploadDownloadDialog*>(), nullptr);
}

TEST_F(VanishedFolderTest, ReadingFromTheChargerFails)
{
    trigger(command("actionReadProfiles"));
    DialogScript script;
    script.expectTransferFailure();
    transfer();
}

TEST_F(VanishedFolderTest, TheBundleIsNotReloaded)
{
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    window->reloadBundle();
}

TEST_F(VanishedFolderTest, TheListCanStillBeSavedElsewhereAndIsNotReplacedUnasked)
{
    DialogScript script;
    const auto choose = [this](const QString& name) {
        return [this, name](QWidget& dialog) {
            auto* field = dialog.findChild<QLineEdit*>("fileNameEdit");
            ASSERT_NE(field, nullptr);
            typeOver(field, elsewhere.filePath(name));
            QTest::keyClick(field, Qt::Key_Return);
        };
    };
    script.thenDo(choose("mine.xml"));
    script.expectExported("XML");
    trigger(command("actionExportXML"));
    EXPECT_TRUE(QFile::exists(elsewhere.filePath("mine.xml")));

    script.thenDo(choose("list.xml"));
    script.expectAppendQuestion("Replace Profiles");
    script.expectNoBackupQuestion("No");
    trigger(command("actionImportXML"));
}
