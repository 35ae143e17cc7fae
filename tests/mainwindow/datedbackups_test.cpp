// Which copies of the list are kept in "saved_profiles/backups", and when.

#include "installation/folderseat.h"
#include "serialports/portturns.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "testpaths.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/xmlmanager.h"

#include <QStatusBar>

using UploadDownload::UploadDownloadDialog;

class DatedBackupsTest : public MainWindowTest
{
protected:
    DatedBackupsTest()
    {
        installSimulator();
        start();
        makeProfile("One");
    }

    QStringList copies() const
    {
        return QDir(pathOf("saved_profiles/backups")).entryList(QDir::Files, QDir::Name);
    }

    /// The occasion of the only copy, and how many profiles it holds.
    QString onlyCopy() const
    {
        const QStringList names = copies();
        if (names.size() != 1) {
            return QString("%1 copies").arg(names.size());
        }
        XMLGeneratorParser::ReadFromXML reader;
        EXPECT_TRUE(reader.readProfiles(pathOf("saved_profiles/backups/" + names.first())));
        EXPECT_EQ(reader.errorText(), "");
        return names.first().section('_', 3).chopped(4)
               + QString(" %1").arg(reader.getProfiles().size());
    }

    UploadDownloadDialog* dialog() const { return window->findChild<UploadDownloadDialog*>(); }

    void pressButton() const { clickOn(childNamed<QPushButton>(dialog(), "okButton")); }

    /// A whole transfer to or from an empty list. It ends with a dialog of this title.
    void transfer(const char* action,
                  const QString& end = "Stay in Bootloader Mode or Reset?") const
    {
        trigger(command(action));
        ASSERT_NE(dialog(), nullptr);
        DialogScript script; // of what comes after the dialog
        script.thenDo([end](QWidget& last) {
            EXPECT_EQ(last.windowTitle(), end);
            last.close();
        });
        pressButton();
        ASSERT_TRUE(waitFor([this] { return dialog() == nullptr; }));
    }

    void deleteAll() const
    {
        DialogScript script;
        script.expectQuestion(
            "Delete all profiles?",
            "All profiles will be deleted. This operation cannot be undone. Continue?", "Yes");
        trigger(command("actionDeleteAllProfiles"));
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
};

TEST_F(DatedBackupsTest, WhatWasWrittenIsKept)
{
    transfer("actionWriteProfiles");
    EXPECT_EQ(onlyCopy(), "written 1");
}

TEST_F(DatedBackupsTest, WhatCouldNotBeWrittenIsNot)
{
    writeFile("supl-faults.txt", "pace = 0%\nno-port = yes\n");
    transfer("actionWriteProfiles", "Failed!");
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(DatedBackupsTest, WhatWasWrittenIsKeptAlsoWhenItsDialogWasClosed)
{
    trigger(command("actionWriteProfiles"));
    pressButton();
    dialog()->close();
    flushDeletions();
    makeProfile("Two"); // not part of what is written
    ASSERT_TRUE(waitFor([] { return PortTurns::ofApplication().descriptions().isEmpty(); }));
    EXPECT_EQ(onlyCopy(), "written 1");
}

TEST_F(DatedBackupsTest, WhatWasReadIsKept)
{
    transfer("actionWriteProfiles");
    QDir(pathOf("saved_profiles/backups")).removeRecursively();
    QListWidget* rows = list();
    deleteAll();
    ASSERT_EQ(rows->count(), 0);
    QDir(pathOf("saved_profiles/backups")).removeRecursively();
    transfer("actionReadProfiles");
    EXPECT_EQ(rows->count(), 1);
    EXPECT_EQ(onlyCopy(), "read 1");
}

TEST_F(DatedBackupsTest, WhatIsDeletedIsKeptAndCanBeLoadedAgain)
{
    makeProfile("Two");
    deleteAll();
    EXPECT_EQ(list()->count(), 0);
    ASSERT_EQ(onlyCopy(), "deleted 2");
    window->findChild<XMLGeneratorParser::XMLManager*>()->importFromXML(
        pathOf("saved_profiles/backups/" + copies().first()));
    ASSERT_EQ(list()->count(), 2);
    EXPECT_EQ(rowTitle(1), "Two");
}

TEST_F(DatedBackupsTest, NoToDeletingKeepsNoCopy)
{
    DialogScript script;
    script.expectQuestion(
        "Delete all profiles?",
        "All profiles will be deleted. This operation cannot be undone. Continue?", "No");
    trigger(command("actionDeleteAllProfiles"));
    EXPECT_EQ(copies(), QStringList());
}

TEST_F(DatedBackupsTest, WhatAFileReplacesIsKeptBesideTheUndatedBackup)
{
    makeProfile("Two");
    auto* manager = window->findChild<XMLGeneratorParser::XMLManager*>();
    ASSERT_TRUE(manager->exportToXML(pathOf("saved_profiles/mine.xml")));
    DialogScript script;
    script.expectImportDialog("XML", pathOf("saved_profiles"), pathOf("saved_profiles/mine.xml"));
    script.expectAppendQuestion("Replace Profiles");
    trigger(command("actionImportXML"));
    EXPECT_EQ(onlyCopy(), "replaced 2");
    EXPECT_TRUE(QFile::exists(pathOf("backup_before_replace.xml")));
}

TEST_F(DatedBackupsTest, WhatIsReloadedIsKeptBesideTheUndatedBackup)
{
    window->reloadBundle();
    EXPECT_EQ(onlyCopy(), "reloaded 1");
    EXPECT_TRUE(QFile::exists(pathOf("backup_fw_update.xml")));
}

TEST_F(DatedBackupsTest, ACopyThatCannotBeKeptIsNamedInTheStatusBarAndHoldsNothingUp)
{
    writeFile("saved_profiles/backups", "a file in the place of the folder");
    transfer("actionWriteProfiles");
    const QString text = child<QStatusBar>("statusBar")->currentMessage();
    EXPECT_TRUE(startsWith(text, "No copy of the profiles could be saved in "));
    child<QStatusBar>("statusBar")->clearMessage();
    deleteAll();
    EXPECT_EQ(list()->count(), 0);
    EXPECT_FALSE(child<QStatusBar>("statusBar")->currentMessage().isEmpty());
}

TEST_F(DatedBackupsTest, ASecondEditorHasNamesOfItsOwn)
{
    window.reset();
    const FolderSeat other(pathOf(""));
    DialogScript script;
    script.thenDo([](QWidget& box) { box.close(); }); // that another editor is open
    start();
    ASSERT_TRUE(waitFor([&script] { return script.isPlayed(); }));
    script.finish();
    makeProfile("Mine");
    deleteAll();
    ASSERT_EQ(copies().size(), 1);
    EXPECT_TRUE(startsWith(copies().first(), "profiles_2_2"));
}
