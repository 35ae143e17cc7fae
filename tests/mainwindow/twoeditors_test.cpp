// Two editors in the same folder. The other one is simulated by its seat and the files it writes.

#include "installation/folderseat.h"
#include "rescue/profilerescue.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/xmlmanager.h"

using UploadDownload::UploadDownloadDialog;

namespace
{
class TwoEditorsTest : public MainWindowTest
{
protected:
    void startAsSecondEditor()
    {
        other = std::make_unique<FolderSeat>(pathOf(""));
        ASSERT_TRUE(other->isFirst());
        DialogScript script;
        script.expectMessage(
            "Another Editor Is Open",
            "Another Kelvaron Profile Editor is open in the same folder. The two editors have "
            "separate lists: save them under different names. This editor saves its backups in its "
            "own "
            "files, such as backup_before_replace_2.xml.");
        window = std::make_unique<MainWindow>();
        window->show();
        EXPECT_TRUE(waitFor([&script] { return script.isPlayed(); }));
        script.finish();
        QApplication::setActiveWindow(window.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// Loads a file with the same profiles in place of the list.
    void replaceList()
    {
        writeFile("saved_profiles/one.xml",
                  window->findChild<XMLGeneratorParser::XMLManager*>()->document().toUtf8());
        DialogScript script;
        script.expectImportDialog("XML", "saved_profiles", pathOf("saved_profiles/one.xml"));
        script.expectAppendQuestion("Replace Profiles");
        trigger(command("actionImportXML"));
    }

    const FakePorts ports{{"/dev/ttyKelvaronDemo"}};
    std::unique_ptr<FolderSeat> other;
};
} // namespace

TEST_F(TwoEditorsTest, EditorThatIsAloneSaysNothing)
{
    const DialogScript nothing;
    start();
    QCoreApplication::processEvents();
}

TEST_F(TwoEditorsTest, SecondEditorIsToldOnce)
{
    startAsSecondEditor();
    makeProfile("One");
    const DialogScript nothing;
    window->reloadBundle();
    QCoreApplication::processEvents();
}

TEST_F(TwoEditorsTest, BackupOfTheFirstOutlivesAReloadOfTheSecond)
{
    writeFile("backup_fw_update.xml", "theirs");
    startAsSecondEditor();
    makeProfile("Mine");
    installBundle("1.2", demoSchema());
    const DialogScript nothing;
    window->reloadBundle();
    EXPECT_EQ(rowTitle(0), "Mine");
    EXPECT_EQ(contentOf("backup_fw_update.xml"), "theirs");
    EXPECT_TRUE(contains(contentOf("backup_fw_update_2.xml"), "Mine"));
}

TEST_F(TwoEditorsTest, BackupOfTheFirstOutlivesALoadByTheSecond)
{
    writeFile("backup_before_replace.xml", "theirs");
    startAsSecondEditor();
    makeProfile("Mine");
    replaceList();
    EXPECT_EQ(contentOf("backup_before_replace.xml"), "theirs");
    EXPECT_TRUE(contentOf("backup_before_replace_2.xml").contains("Mine"));
}

TEST_F(TwoEditorsTest, RescuedListsHaveNamesOfTheirOwn)
{
    startAsSecondEditor();
    makeProfile("Mine");
    const QString path = window->findChild<ProfileRescue*>()->save();
    EXPECT_TRUE(startsWith(QFileInfo(path).fileName(), "rescued_profiles_2_")) << path;
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(TwoEditorsTest, ChargerGetsTheListOfTheEditorThatWrites)
{
    writeFile("supl.mac", "#!/bin/sh\ncp profilesToUpload.hex \"seen$5\"\n");
    ASSERT_TRUE(QFile::setPermissions(pathOf("supl.mac"),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    start();
    makeProfile("Mine");
    trigger(command("actionWriteProfiles"));
    auto* dialog = window->findChild<UploadDownloadDialog*>();
    ASSERT_NE(dialog, nullptr);
    const QByteArray mine = contentOf("profilesToUpload.hex");
    writeFile("profilesToUpload.hex", ":00000001FF\n"); // the other editor opens its writer
    DialogScript script;
    script.thenDo([](QWidget& question) { question.close(); });
    clickOn(childNamed<QPushButton>(dialog, "okButton"));
    ASSERT_TRUE(waitFor([this] { return window->findChild<UploadDownloadDialog*>() == nullptr; }));
    EXPECT_EQ(contentOf("seen-E"), mine);
    EXPECT_EQ(contentOf("seen-w"), mine);
}
