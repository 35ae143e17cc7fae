// A bundle that is replaced while the program is running.

#include "applicationglobalmap.h"
#include "profileimport/parsedprofile.h"
#include "settingsui/globalsettingsdialog.h"
#include "support/bundletext.h"
#include "support/gui/reloadbundletest.h"
#include "xmlformat/readfromxml.h"

#include <cstdio>

TEST_F(ReloadBundleTest, ProfilesComeBackUnderTheNewSchema)
{
    makeProfile("One");
    clickOn(child<QPushButton>("editProfileButton"));
    enterText(field("Current"), "7");
    enterText(field("Margin"), "3");
    clickOn(child<QPushButton>("saveChangesButton"));
    clickOn(childNamed<QPushButton>(row(0), "defaultProfileButton"));
    makeProfile("Two", 1);

    installBundle("1.2", newerSchema());
    DialogScript script;
    script.expectMessage(
        "Reloaded With Changes",
        "A newer Kelvaron Bundle is in use. The list does not match its "
        "settings:\n\n"
        "Charge Current is missing and is now 0 (\"One\")\n"
        "Cutoff: 0.7 is not between 0.01 and 0 (\"One\")\n"
        "Margin: 3 is not between 0 and 0 (\"One\")\n"
        "\"current\" is unknown and was left out (\"One\")\n\n"
        "Please check this before you write to the Kelvaron. The previous list is in "
        "the file backup_fw_update.xml.");
    flash();
    script.finish();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.2");
    ASSERT_EQ(list()->count(), 2);
    EXPECT_EQ(rowTitle(0), "One");
    EXPECT_EQ(rowTitle(1), "Two");
    EXPECT_TRUE(row(0)->getDefaultStatus());
    EXPECT_TRUE(row(0)->getActiveStatus());

    clickOn(childNamed<QLabel>(row(0), "profileTitle"));
    EXPECT_EQ(field("Margin")->text(), "3");
    // The old name and its value are gone; the file has no value for the new name.
    EXPECT_EQ(cellOf(gridOf(child<QWidget>("containerScroll")), "Current", 1), nullptr);
    EXPECT_EQ(field("Charge Current")->text(), "0");
    EXPECT_TRUE(QFile::exists(pathOf("backup_fw_update.xml")));
}

TEST_F(ReloadBundleTest, PaneShowsTheProfileThatCameLast)
{
    makeProfile("One");
    makeProfile("Two");
    installBundle("1.2", TestSchema::text());
    flash();
    EXPECT_EQ(field("Title")->text(), "Two");
    EXPECT_FALSE(field("Title")->isEnabled());
}

TEST_F(ReloadBundleTest, NewProfilesUseTheNewSchema)
{
    installBundle("1.2", newerSchema());
    flash();
    EXPECT_EQ(list()->count(), 0);
    makeProfile("New");
    EXPECT_EQ(field("Charge Current")->text(), "2.5");
}

TEST_F(ReloadBundleTest, EditedAdvancedNumbersComeBack)
{
    makeProfile("One");
    clickOn(child<QPushButton>("editProfileButton"));
    clickOn(child<QCheckBox>("AdvancedModeToggleCheckBox"));
    enterText(field("Pack Voltage"), "14.125");
    clickOn(child<QPushButton>("saveChangesButton"));
    installBundle("1.2", TestSchema::text());
    flash();
    ASSERT_EQ(list()->count(), 1);
    EXPECT_EQ(field("Pack Voltage")->text(), "14.125");
    EXPECT_TRUE(child<QCheckBox>("AdvancedModeToggleCheckBox")->isChecked());
}

TEST_F(ReloadBundleTest, EachFlashReloads)
{
    makeProfile("One");
    trigger(command("actionFlashFirmware"));
    trigger(command("actionFlashFirmware"));
    const QList<KelvaronFirmwareToolWindow*> tools =
        window->findChildren<KelvaronFirmwareToolWindow*>();
    ASSERT_EQ(tools.size(), 2);
    QString version = "1.2";
    for (KelvaronFirmwareToolWindow* tool : tools) {
        installBundle(version, TestSchema::text());
        emit tool->flashed();
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), version);
        EXPECT_EQ(list()->count(), 1);
        EXPECT_EQ(rowTitle(0), "One");
        version = "1.3";
        tool->close();
    }
}

TEST_F(ReloadBundleTest, ChemistryThatIsGoneIsLeftOutAndNamed)
{
    makeProfile("One");
    makeProfile("Two", 1);
    installBundle("1.2", TestSchema::singleChemistry());
    DialogScript script;
    script.thenPress(
        "OK", [](const QMessageBox& box) { EXPECT_TRUE(contains(box.text(), "Plain Cell")); });
    trigger(command("actionFlashFirmware"));
    QPointer<KelvaronFirmwareToolWindow> tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_TRUE(tool != nullptr);
    emit tool->flashed();
    script.finish();
    ASSERT_EQ(list()->count(), 1);
    EXPECT_EQ(rowTitle(0), "One");
    tool->close();
}

TEST_F(ReloadBundleTest, ABackupThatLacksProfilesKeepsListAndSchema)
{
    QByteArray schema = TestSchema::text();
    schema.replace("\"Capacity\"", "\"Capacity (20 h)\""); // not a valid name of an XML element
    installBundle("1.2", schema);
    flash();
    makeProfile("One");
    makeProfile("Two", 1);

    installBundle("1.3", newerSchema());
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    flash();
    script.finish();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.2");
    ASSERT_EQ(list()->count(), 2);
    EXPECT_EQ(rowTitle(0), "One");
    EXPECT_EQ(rowTitle(1), "Two");
    clickOn(childNamed<QLabel>(row(0), "profileTitle"));
    EXPECT_EQ(field("Current")->text(), "2.5");
}

namespace
{
/// A reload of a schema in which a global setting has another name and default, and "Alpha Cell"
/// another type.
class ReloadedManagersTest : public ReloadBundleTest
{
protected:
    ReloadedManagersTest()
    {
        QByteArray schema = TestSchema::text();
        schema.replace("\"Charger Name\", General, \"Bench\"",
                       "\"Device Name\", General, \"Field\"");
        schema.replace("num, auto, 2, 2, x1, 0, \"type\", \"\", Identity, 2",
                       "num, auto, 7, 7, x1, 0, \"type\", \"\", Identity, 7");
        installBundle("1.2", schema);
        DialogScript script;
        script.expectQuestion("Import Global Settings?",
                              "The global settings in the file you chose are different than the "
                              "ones you currently have. Do you want to overwrite the existing "
                              "settings?",
                              "No");
        flash();
    }

    QString savedPath(const QString& name) const { return pathOf("saved_profiles/" + name); }
};
} // namespace

TEST_F(ReloadedManagersTest, SavedFilesHaveTheNewGlobalSettings)
{
    DialogScript script;
    script.expectExportDialog("XML", pathOf("saved_profiles"), savedPath("after.xml"))
        .expectExported("XML");
    trigger(command("actionExportXML"));
    script.finish();
    QFile file(savedPath("after.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(contains(file.readAll(), "<device_name>Field</device_name>"));
}

TEST_F(ReloadedManagersTest, HexFilesAreReadByTheNewSchema)
{
    const QStringList filters = {"HEX files (*.hex)", "Any files (*.*)"};
    makeProfile("One");
    DialogScript script;
    script.expectExportDialog("HEX", pathOf("saved_profiles"), savedPath("after.hex"))
        .expectExported("HEX")
        .expectImportDialog("HEX", pathOf("saved_profiles"), savedPath("after.hex"))
        .expectAppendQuestion("Add Profiles");
    trigger(command("actionExportHEX"));
    trigger(command("actionImportHEX"));
    script.finish();
    ASSERT_EQ(list()->count(), 2);
    EXPECT_EQ(rowTitle(1), "One");
}

TEST_F(ReloadedManagersTest, GlobalSettingsEditorHasTheNewDefaults)
{
    // The command is disabled, so its slot is called.
    window->findChild<GlobalSettingsManager*>()->on_editGlobalSettingsClicked();
    const QPointer<GlobalSettingsDialog> dialog = window->findChild<GlobalSettingsDialog*>();
    ASSERT_TRUE(dialog != nullptr);
    auto* name = qobject_cast<QLineEdit*>(cellOf(gridOf(dialog), "Device Name", 3));
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(name->text(), "Field");
    EXPECT_EQ(cellOf(gridOf(dialog), "Charger Name", 1), nullptr);
    clickOn(childNamed<QPushButton>(dialog, "okPushButton"));
}

class FlashDuringAnEditTest : public ReloadBundleTest
{
protected:
    FlashDuringAnEditTest()
    {
        makeProfile("One");
        clickOn(child<QPushButton>("editProfileButton"));
        enterText(field("Margin"), "2");
        installBundle("1.2", relabelledSchema());

        // The command is disabled meanwhile, so only the tool's signal is emitted.
        command("actionFlashFirmware")->setEnabled(true);
        flash();
    }

    void expectWaiting() const
    {
        EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.1");
        EXPECT_TRUE(field("Current")->isEnabled());
        EXPECT_EQ(field("Margin")->text(), "2");
    }

    void expectReloaded(const QString& margin) const
    {
        EXPECT_TRUE(
            waitFor([] { return ApplicationGlobalMap::getString("bundle_version") == "1.2"; }));
        ASSERT_EQ(list()->count(), 1);
        EXPECT_EQ(rowTitle(0), "One");
        EXPECT_EQ(field("Margin")->text(), margin);
        EXPECT_NE(field("CURRENT"), nullptr);
        EXPECT_TRUE(command("actionExportXML")->isEnabled());
    }
};

TEST_F(FlashDuringAnEditTest, WaitsUntilItIsSaved)
{
    const DialogScript nothing;
    expectWaiting();
    clickOn(child<QPushButton>("saveChangesButton"));
    expectReloaded("2");
}

TEST_F(FlashDuringAnEditTest, WaitsUntilItIsCancelled)
{
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    expectWaiting();
    clickOn(child<QPushButton>("cancelChangesButton"));
    expectReloaded("1");
}

TEST_F(ReloadBundleTest, EditAfterAReloadWorks)
{
    makeProfile("One");
    installBundle("1.2", relabelledSchema());
    flash();
    clickOn(child<QPushButton>("editProfileButton"));
    EXPECT_FALSE(command("actionExportXML")->isEnabled());
    enterText(field("CURRENT"), "5");
    clickOn(child<QPushButton>("saveChangesButton"));
    EXPECT_EQ(field("CURRENT")->text(), "5");
    EXPECT_TRUE(command("actionExportXML")->isEnabled());
}

// A reload that ends the program, in a child process.

class ReloadDeathTest : public MainWindowTest
{
protected:
    void reloadBundleForANewerEditor() const
    {
        const QByteArray bundle = BundleText()
                                      .key("VERSION", "1.2")
                                      .key("MIN_SOFTWARE_VERSION_REQUIRED", "1.0")
                                      .section("device\n")
                                      .section(TestSchema::text())
                                      .bytes();
        QFile file(pathOf("v1.2.kelvaron"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bundle), bundle.size());
        file.close();
        DialogScript script;
        script.thenPress("OK", [](const QMessageBox& box) {
            std::fprintf(stderr, "BOX %s: %s\n", qPrintable(box.windowTitle()),
                         qPrintable(box.text()));
        });
        window->reloadBundle();
    }
};

TEST_F(ReloadDeathTest, BundleForANewerEditorEndsTheProgramOrderlyAndLeavesTheBackup)
{
    EXPECT_EXIT(
        {
            start();
            makeProfile("One");
            reloadBundleForANewerEditor();
        },
        ::testing::ExitedWithCode(0),
        "BOX Software Update Required: Kelvaron Bundle version 1.2 requires Kelvaron Profile "
        "Editor version 1.0 or higher");
    XMLGeneratorParser::ReadFromXML backup;
    ASSERT_TRUE(backup.readProfiles(pathOf("backup_fw_update.xml")));
    ASSERT_EQ(backup.getProfiles().size(), 1);
    EXPECT_EQ(backup.getProfiles().first()->getProperties().value("title"), "One");
}
