// A disk that gets full at every byte of every file that the main window writes. The old file and
// the list are kept, and the user gets a message.

#include "HEXGeneratorParser/hexmanager.h"
#include "applicationglobalmap.h"
#include "base/fatalassertion.h"
#include "profileimport/parsedprofile.h"
#include "rescue/profilerescue.h"
#include "support/filesizelimit.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"
#include "xmlformat/readfromxml.h"
#include "xmlformat/xmlmanager.h"

#include <QSignalSpy>

using HEXGeneratorParser::HEXManager;
using XMLGeneratorParser::XMLManager;

namespace
{
class FullDiskTest : public MainWindowTest
{
protected:
    /// Writes an existing file, with the disk full at each of its bytes.
    void expectWholeOrOld(const QString& name, int size, const std::function<bool()>& write)
    {
        ASSERT_GT(size, 1000);
        writeFile(name, "old");
        for (int limit = 0; limit < size; ++limit) {
            {
                const FileSizeLimit fullDisk(limit);
                ASSERT_FALSE(write()) << limit;
            }
            ASSERT_EQ(contentOf(name), "old") << limit;
        }
        const QStringList others =
            QDir(pathOf("")).entryList({name + ".*"}, QDir::Files | QDir::Hidden);
        EXPECT_EQ(others, QStringList()) << "a half-written file";
        const FileSizeLimit justEnough(size);
        EXPECT_TRUE(write());
        EXPECT_EQ(contentOf(name).size(), size);
    }

    static QList<int> places(int size) { return {0, 1, size / 2, size - 1}; }
};
} // namespace

TEST_F(FullDiskTest, ASavedListIsWholeOrTheOldOne)
{
    startWithTwoProfiles();
    const auto* manager = window->findChild<XMLManager*>();
    expectWholeOrOld("list.xml", document().size(),
                     [manager] { return manager->exportToXML("list.xml"); });
}

TEST_F(FullDiskTest, AnExportedImageIsWholeOrTheOldOne)
{
    startWithTwoProfiles();
    auto* manager = window->findChild<HEXManager*>();
    ASSERT_TRUE(manager->exportProfiles("whole.hex"));
    expectWholeOrOld("list.hex", contentOf("whole.hex").size(),
                     [manager] { return manager->exportProfiles("list.hex"); });
}

TEST_F(FullDiskTest, ATransferDoesNotBegin)
{
    startWithTwoProfiles();
    ASSERT_TRUE(window->findChild<HEXManager*>()->exportProfiles("profilesToUpload.hex"));
    makeProfile("Three");
    const QByteArray list = document();
    const QMap<QString, QByteArray> before = allFiles();
    for (const int limit : places(contentOf("profilesToUpload.hex").size())) {
        DialogScript script;
        script.expectMessage("Error while uploading!",
                             "An error occured while exporting profiles to HEX. Please try again.");
        const FileSizeLimit fullDisk(limit);
        trigger(command("actionWriteProfiles"));
        EXPECT_EQ(window->findChild<UploadDownload::UploadDownloadDialog*>(), nullptr);
        EXPECT_EQ(allFiles(), before) << limit;
    }
    EXPECT_EQ(document(), list);
}

TEST_F(FullDiskTest, AListIsNotReplacedWithoutItsCopy)
{
    startWithTwoProfiles();
    ASSERT_TRUE(window->findChild<XMLManager*>()->exportToXML("saved_profiles/list.xml"));
    ASSERT_TRUE(
        QFile::copy(pathOf("saved_profiles/list.xml"), pathOf("backup_before_replace.xml")));
    makeProfile("Three");
    const QByteArray list = document();
    const QMap<QString, QByteArray> before = allFiles();
    for (const int limit : places(list.size())) {
        DialogScript script;
        script.expectImportDialog("XML", pathOf("saved_profiles"), "list.xml");
        script.expectAppendQuestion("Replace Profiles");
        script.expectNoBackupQuestion("No");
        const FileSizeLimit fullDisk(limit);
        trigger(command("actionImportXML"));
        EXPECT_EQ(document(), list) << limit;
        EXPECT_EQ(allFiles(), before) << limit;
    }
}

TEST_F(FullDiskTest, ABundleIsNotReloadedWithoutABackup)
{
    startWithTwoProfiles();
    const QByteArray list = document();
    installBundle("1.2", demoSchema());
    const QMap<QString, QByteArray> before = allFiles();
    for (const int limit : places(list.size())) {
        DialogScript script;
        script.expectMessage("Bundle Not Reloaded",
                             "The profiles could not be backed up, so the bundle in use was kept. "
                             "Please save the profiles to a file and restart the program.");
        const FileSizeLimit fullDisk(limit);
        window->reloadBundle();
        EXPECT_EQ(document(), list) << limit;
        EXPECT_EQ(allFiles(), before) << limit;
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.0.0");
    }
}

namespace
{
/// An older schema is in the folder when the disk is full.
class OlderSchemaTest : public FullDiskTest
{
protected:
    void expectOlderSchemaTold(DialogScript& script, const QString& bundle)
    {
        script.expectMessage(
            "Files Not Written",
            "The files device.txt and kelvaron_chemistries.cb of the Kelvaron Bundle " + bundle
                + " could not be written, so the older ones are used. They may not match the "
                  "charger. Please free some space on the disk, or make the folder "
                  "KelvaronProfileEditorFiles writable, and restart the program.");
    }

    void installNewerBundle() const
    {
        newer += "// and a comment more\n";
        installBundle("1.2", newer);
    }

    mutable QByteArray newer = demoSchema();
};
} // namespace

TEST_F(OlderSchemaTest, IsUsedByAStartThatSaysSo)
{
    start();
    window.reset();
    installNewerBundle();
    const QMap<QString, QByteArray> before = allFiles();
    for (const int limit : places(newer.size())) {
        DialogScript script;
        expectOlderSchemaTold(script, "v1.2.kelvaron");
        const FileSizeLimit fullDisk(limit);
        window = std::make_unique<MainWindow>();
        EXPECT_EQ(allFiles(), before) << limit;
        window.reset();
    }
    const DialogScript nothing;
    start();
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), newer);
}

TEST_F(OlderSchemaTest, IsUsedByAReloadThatSaysSo)
{
    start();
    makeProfile("One");
    const QByteArray list = document();
    const QByteArray schema = contentOf("kelvaron_chemistries.cb");
    installNewerBundle();
    ASSERT_LT(list.size(), newer.size()) << "the backup must find room";
    {
        DialogScript script;
        expectOlderSchemaTold(script, "v1.2.kelvaron");
        const FileSizeLimit fullDisk(newer.size() - 1);
        window->reloadBundle();
    }
    EXPECT_EQ(contentOf("kelvaron_chemistries.cb"), schema);
    EXPECT_EQ(document(), list);
}

TEST_F(OlderSchemaTest, ThatIsTheSameIsNoReasonForAMessage)
{
    start();
    window.reset();
    const DialogScript nothing;
    const FileSizeLimit fullDisk(0);
    start();
}

namespace
{
class FullDiskDeathTest : public FullDiskTest
{
protected:
    QStringList rescuedFiles() const
    {
        return QDir(pathOf("saved_profiles")).entryList({"rescued_profiles_*"}, QDir::Files);
    }

    /// Crashes with the disk full at this byte.
    void crash(int limit)
    {
        startWithTwoProfiles();
        QSignalSpy kept(window->findChild<ProfileRescue*>(), &ProfileRescue::copyKept);
        kept.wait(patience);
        const FileSizeLimit fullDisk(limit);
        raise(SIGTERM);
    }
};
} // namespace

TEST_F(FullDiskDeathTest, AFatalAssertionOnAFullDiskPromisesNothing)
{
    EXPECT_EXIT(
        {
            startWithTwoProfiles();
            qputenv("TMPDIR", pathOf("").toUtf8());
            DialogScript script;
            script.thenDo([](QWidget& dialog) {
                auto* box = qobject_cast<QMessageBox*>(&dialog);
                if (box != nullptr && box->text().contains("has to close")
                    && !box->text().contains("were saved")) {
                    QFile::remove("supl.mac"); // shows that everything was fine
                }
                dialog.close();
            });
            const FileSizeLimit fullDisk(100);
            KELVARON_ASSERT_TEXT(list() == nullptr, "broken on purpose");
        },
        ::testing::KilledBySignal(SIGABRT), "");
    EXPECT_FALSE(QFile::exists(pathOf("supl.mac")));
    EXPECT_EQ(rescuedFiles(), QStringList());
    EXPECT_EQ(QDir(pathOf("")).entryList({"rescued_profiles_*"}), QStringList());
}

TEST_F(FullDiskDeathTest, ACrashOnAFullDiskKeepsTheWholeProfilesThatFit)
{
    int size = 0;
    {
        startWithTwoProfiles();
        size = document().size();
        window.reset();
    }
    EXPECT_EXIT(crash(size - 100), ::testing::KilledBySignal(SIGTERM), "");
    ASSERT_EQ(rescuedFiles().size(), 1);
    XMLGeneratorParser::ReadFromXML reader;
    ASSERT_TRUE(reader.readProfiles(pathOf("saved_profiles/" + rescuedFiles().first())));
    ASSERT_EQ(reader.getProfiles().size(), 1);
    EXPECT_EQ(reader.getProfiles().first()->getProperties().value("title"), "One");
    EXPECT_FALSE(reader.errorText().isEmpty());
}

TEST_F(FullDiskDeathTest, ACrashOnADiskWithoutAnyRoomLeavesNoEmptyFile)
{
    EXPECT_EXIT(crash(0), ::testing::KilledBySignal(SIGTERM), "");
    EXPECT_EQ(rescuedFiles(), QStringList());
}
