// A bundle that is replaced under the running program.

#include "applicationglobalmap.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "profiles/profilename.h"
#include "support/gui/editorwindow.h"
#include "support/gui/installation.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>

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
    const DialogScript nothing;
    flash();
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
        installBundle(version, newerSchema());
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

class FlashDuringAnEditTest : public ReloadBundleTest
{
protected:
    FlashDuringAnEditTest()
    {
        makeProfile("One");
        clickOn(child<QPushButton>("editProfileButton"));
        enterText(field("Margin"), "2");
        installBundle("1.2", newerSchema());

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
        EXPECT_TRUE(QTest::qWaitFor(
            [] { return ApplicationGlobalMap::getString("bundle_version") == "1.2"; }));
        ASSERT_EQ(list()->count(), 1);
        EXPECT_EQ(rowTitle(0), "One");
        EXPECT_EQ(field("Margin")->text(), margin);
        EXPECT_NE(field("Charge Current"), nullptr);
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
    installBundle("1.2", newerSchema());
    flash();
    clickOn(child<QPushButton>("editProfileButton"));
    EXPECT_FALSE(command("actionExportXML")->isEnabled());
    enterText(field("Charge Current"), "5");
    clickOn(child<QPushButton>("saveChangesButton"));
    EXPECT_EQ(field("Charge Current")->text(), "5");
    EXPECT_TRUE(command("actionExportXML")->isEnabled());
}
