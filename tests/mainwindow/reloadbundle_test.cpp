// A bundle that is replaced under the running program.

#include "CBGenerator/structsetting.h"
#include "CBGenerator/structsettings.h"
#include "applicationglobalmap.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "profileimport/parsedprofile.h"
#include "profiles/profilename.h"
#include "profiles/profilesettings.h"
#include "settingsui/globalsettingsdialog.h"
#include "settingsui/globalsettingsmanager.h"
#include "support/bundletext.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"
#include "support/waiting.h"
#include "xmlformat/readfromxml.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

#include <cstdio>

using FirmwareTool::KelvaronFirmwareToolWindow;

class ReloadBundleTest : public MainWindowTest
{
protected:
    ReloadBundleTest()
    {
        installBundle("1.1", TestSchema::text());
        start();
    }

    /// Opens the firmware tool and has it tell that new firmware is in the charger.
    void flash()
    {
        trigger(command("actionFlashFirmware"));
        auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
        ASSERT_NE(tool, nullptr);
        emit tool->flashed();
        tool->close();
        flushDeletions();
    }

    /// The test schema with "Current" renamed to "Charge Current" and a new default for "Cells".
    static QByteArray newerSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Current\"", "\"Charge Current\"");
        return text;
    }

    /// The test schema with "Current" shown as "CURRENT"; files have the same tag for both.
    static QByteArray relabelledSchema()
    {
        QByteArray text = TestSchema::text();
        text.replace("\"Current\"", "\"CURRENT\"");
        return text;
    }

    QLineEdit* field(const QString& label) const
    {
        auto* found =
            qobject_cast<QLineEdit*>(cellOf(gridOf(child<QWidget>("containerScroll")), label, 3));
        EXPECT_NE(found, nullptr) << label.toStdString();
        return found;
    }

    ProfileName* row(int number) const
    {
        return qobject_cast<ProfileName*>(list()->itemWidget(list()->item(number)));
    }
};

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
    script.expectMessage("Reloaded With Changes",
                         "A newer Kelvaron Bundle is in use. The list does not match its "
                         "settings:\n\n"
                         "Charge Current is missing and is now 0 (\"One\")\n"
                         "Cutoff: 0.7 is not between 0.01 and 0 (\"One\")\n"
                         "Margin: 3 is not between 0 and 0 (\"One\")\n"
                         "\"current\" is unknown and was left out (\"One\")\n\n"
                         "Please check this before you write to the Kelvaron. The list as it was "
                         "before is in the file backup_fw_update.xml.");
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
    // The old name is gone and its value with it; the file has none for the new name.
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
    script.thenDo([](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->text().contains("Plain Cell"));
        clickOn(box->button(QMessageBox::Ok));
    });
    trigger(command("actionFlashFirmware"));
    QPointer<KelvaronFirmwareToolWindow> tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_TRUE(tool != nullptr);
    emit tool->flashed();
    script.finish();
    ASSERT_EQ(list()->count(), 1);
    EXPECT_EQ(rowTitle(0), "One");
    tool->close();
}

namespace
{
/// What the rows of the list hold: flags, and the text of every visible setting by its name.
struct RowContent
{
    QString chemistry;
    bool active = false;
    bool isDefault = false;
    bool modifiable = false;
    QMap<QString, QString> values;
};

bool operator==(const RowContent& one, const RowContent& other)
{
    return one.chemistry == other.chemistry && one.active == other.active
           && one.isDefault == other.isDefault && one.modifiable == other.modifiable
           && one.values == other.values;
}

class LongListReloadTest : public ReloadBundleTest
{
protected:
    static constexpr int profileCount = 50;

    /// Loads 50 profiles of both chemistries, each with values of its own.
    LongListReloadTest()
    {
        QFile file(pathOf("saved_profiles/fifty.xml"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<KelvaronProfiles>\n");
        for (int i = 0; i < profileCount; ++i) {
            file.write(profile(i).toUtf8());
        }
        file.write("</KelvaronProfiles>\n");
        file.close();
        DialogScript script;
        script.expectFileDialog("Select XML File to Import Profiles",
                                {"XML files (*.xml)", "Any files (*.*)"}, pathOf("saved_profiles"),
                                "fifty.xml");
        trigger(command("actionImportXML"));
        script.finish();
    }

    static bool isPlain(int number) { return number % 3 == 0; }
    static QString title(int number) { return QString("No. %1 <&").arg(number); }

    static QString profile(int number)
    {
        const QString own =
            isPlain(number) ? QString("<capacity>%1</capacity>").arg(number + 1)
                            : QString("<mode>Fast</mode><cells>%1</cells><current>%2</current>"
                                      "<balance>true</balance><cutoff>0.%1</cutoff><note>n%1</note>"
                                      "<pack_voltage>%3</pack_voltage><cold_check>true</cold_check>"
                                      "<ending>Hold</ending><margin>0</margin>")
                                  .arg(number % 8 + 1)
                                  .arg(0.25 * number + 1)
                                  .arg(3.5 * (number % 8 + 1));
        return QString("<profile id=\"%1\" active=\"%2\" default=\"%3\" modifiable=\"true\">"
                       "<chemistry>%4</chemistry><title>%5</title><subtitle>s%1</subtitle>%6"
                       "</profile>\n")
            .arg(QString::number(number), number % 2 == 0 ? "true" : "false",
                 number == 7 ? "true" : "false", isPlain(number) ? "Plain Cell" : "Alpha Cell",
                 title(number).toHtmlEscaped(), own);
    }

    QList<RowContent> contents() const
    {
        QList<RowContent> all;
        for (int i = 0; i < list()->count(); ++i) {
            const ProfileSettings& settings = *row(i)->getProfileSettings();
            RowContent content{settings.chemistry,
                               row(i)->getActiveStatus(),
                               row(i)->getDefaultStatus(),
                               settings.getModifiable(),
                               {}};
            const QList<HParser::StructSetting*> visible = settings.settings->getStructSettings();
            for (const HParser::StructSetting* setting : visible) {
                content.values.insert(setting->descriptiveName, setting->getValue());
            }
            all.append(content);
        }
        return all;
    }
};
} // namespace

TEST_F(LongListReloadTest, EveryValueComesBack)
{
    const QList<RowContent> before = contents();
    ASSERT_EQ(before.size(), profileCount);
    ASSERT_TRUE(before.at(7).isDefault);
    ASSERT_EQ(before.at(49).values.value("Current"), "13.25");
    installBundle("1.2", TestSchema::text());
    const DialogScript nothing;
    flash();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.2");
    EXPECT_EQ(contents(), before);
}

TEST_F(LongListReloadTest, LosesExactlyWhatTheNewSchemaHasNot)
{
    QByteArray newer = TestSchema::singleChemistry(); // without "Plain Cell"
    newer.replace("\"Current\"", "\"Charge Current\"");
    const int note = newer.indexOf("    char note[8]");
    newer.remove(note, newer.indexOf('\n', note) + 1 - note);
    installBundle("1.2", newer);

    QList<RowContent> expected;
    QStringList leftOut;
    const QList<RowContent> before = contents();
    for (int i = 0; i < profileCount; ++i) {
        if (isPlain(i)) {
            leftOut.append(QString("\"%1\" (chemistry \"Plain Cell\")").arg(title(i)));
            continue;
        }
        RowContent content = before.at(i);
        content.values.remove("Note");
        content.values.remove("Current");
        content.values.insert("Charge Current", "0");
        expected.append(content);
    }
    DialogScript script;
    script.expectMessage(
        "Profiles Left Out",
        "17 profiles were left out, because the Kelvaron Bundle in use does not "
        "know their chemistries:\n\n"
            + leftOut.join('\n')
            + "\n\nThey are still in the file backup_fw_update.xml. Load that file "
              "when a bundle that knows them is in use.");
    script.thenDo([](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowTitle(), "Reloaded With Changes");
        for (const char* change :
             {"Charge Current is missing and is now 0", "\"current\" is unknown and was left out",
              "\"note\" is unknown and was left out"}) {
            EXPECT_TRUE(box->text().contains(
                QString(change) + " (\"No. 1 <&\", \"No. 2 <&\", \"No. 4 <&\" and 30 more)\n"))
                << box->text().toStdString();
        }
        clickOn(box->button(QMessageBox::Ok));
    });
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_NE(tool, nullptr);
    emit tool->flashed();
    script.finish();
    tool->close();
    flushDeletions();
    EXPECT_EQ(contents(), expected);

    XMLGeneratorParser::ReadFromXML backup;
    ASSERT_TRUE(backup.readProfiles(pathOf("backup_fw_update.xml")));
    EXPECT_EQ(backup.getProfiles().size(), profileCount);
}

TEST_F(LongListReloadTest, ABackupThatCannotBeWrittenKeepsListAndSchema)
{
    const QList<RowContent> before = contents();
    installBundle("1.2", newerSchema());
    ASSERT_TRUE(QDir().mkdir(pathOf("backup_fw_update.xml")));
    DialogScript script;
    script.expectMessage("Bundle Not Reloaded",
                         "The profiles could not be backed up, so the bundle in use was kept. "
                         "Please save the profiles to a file and restart the program.");
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    ASSERT_NE(tool, nullptr);
    emit tool->flashed();
    script.finish();
    tool->close();
    flushDeletions();
    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.1");
    EXPECT_EQ(contents(), before);
}

TEST_F(ReloadBundleTest, ABackupThatLacksProfilesKeepsListAndSchema)
{
    QByteArray schema = TestSchema::text();
    schema.replace("\"Capacity\"", "\"Capacity (20 h)\""); // no name of an XML element
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
    script
        .expectFileDialog("Select XML File to Export Profiles",
                          {"XML files (*.xml)", "Any files (*.*)"}, pathOf("saved_profiles"),
                          savedPath("after.xml"))
        .expectMessage("Export to XML status", "The profiles have been successfully exported!");
    trigger(command("actionExportXML"));
    script.finish();
    QFile file(savedPath("after.xml"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_TRUE(file.readAll().contains("<device_name>Field</device_name>"));
}

TEST_F(ReloadedManagersTest, HexFilesAreReadByTheNewSchema)
{
    const QStringList filters = {"HEX files (*.hex)", "Any files (*.*)"};
    makeProfile("One");
    DialogScript script;
    script
        .expectFileDialog("Select HEX File to Export Profiles", filters, pathOf("saved_profiles"),
                          savedPath("after.hex"))
        .expectMessage("Export to HEX status", "The profiles have been successfully exported!")
        .expectFileDialog("Select HEX File to Import Profiles", filters, pathOf("saved_profiles"),
                          savedPath("after.hex"))
        .expectMessageBox("Add Profiles to List?",
                          "Do you want to add the imported profiles to the current list of "
                          "profiles, or replace them?<br>",
                          {"Add Profiles", "Replace Profiles"}, "Add Profiles", "Add Profiles");
    trigger(command("actionExportHEX"));
    trigger(command("actionImportHEX"));
    script.finish();
    ASSERT_EQ(list()->count(), 2);
    EXPECT_EQ(rowTitle(1), "One");
}

TEST_F(ReloadedManagersTest, GlobalSettingsEditorHasTheNewDefaults)
{
    // The command is not offered, so here by its slot.
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

        // The command is locked meanwhile, so the tool was opened before; here by its signal alone.
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

// A reload that ends the program: that of a child process.

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
        script.thenDo([](QWidget& dialog) {
            auto* box = qobject_cast<QMessageBox*>(&dialog);
            ASSERT_NE(box, nullptr);
            std::fprintf(stderr, "BOX %s: %s\n", qPrintable(box->windowTitle()),
                         qPrintable(box->text()));
            clickOn(box->button(QMessageBox::Ok));
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
