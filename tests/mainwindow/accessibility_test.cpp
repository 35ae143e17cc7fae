// The content of each window and dialog of the program for screen readers.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "messagedialogs.h"
#include "settingsui/advancedmodetogglecheckbox.h"
#include "settingsui/globalsettingsmanager.h"
#include "support/fakeports.h"
#include "support/gui/accessibletree.h"
#include "support/gui/httpserver.h"
#include "support/gui/installation.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"
#include "updatecheck/newfirmwarechecker.h"
#include "updatecheck/newfirmwarecheckerdialog.h"

#include <QComboBox>

using FirmwareTool::KelvaronFirmwareToolWindow;
using NewFirmwareChecker::NewFirmwareCheckerDialog;
using UploadDownload::UploadDownloadDialog;

class AccessibilityTest : public MainWindowTest
{
protected:
    AccessibilityTest() { start(); }

    static void expectAllIsTold(QWidget* shown)
    {
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(AccessibleTree::faults(shown), QStringList()) << shown->metaObject()->className();
    }

    void expectToldIn(DialogScript& script) const
    {
        script.thenDo([](QWidget& dialog) {
            expectAllIsTold(&dialog);
            dialog.close();
        });
    }

    const FakePorts ports{{"COM7", "COM8"}};
};

TEST_F(AccessibilityTest, EmptyMainWindow)
{
    expectAllIsTold(window.get());
    const QString tree = AccessibleTree::print(window.get());
    EXPECT_TRUE(contains(tree, "List \"Profiles\""));
    EXPECT_TRUE(contains(tree, "Button \"Move Up\""));
    EXPECT_TRUE(contains(tree, "Graphic \"Tovo\""));
}

TEST_F(AccessibilityTest, MainWindowWithProfilesAndWhileOneIsEdited)
{
    makeProfile("First");
    makeProfile("Second", 2);
    expectAllIsTold(window.get());
    clickOn(child<QPushButton>("editProfileButton"));
    clickOn(window->findChild<AdvancedModeToggleCheckBox*>());
    expectAllIsTold(window.get());
    const QString tree = AccessibleTree::print(window.get());
    EXPECT_TRUE(contains(tree, "ListItem \"First, "));
    EXPECT_TRUE(contains(tree, "Button \"Delete: Second\" description \"Delete Profile\""));
    EXPECT_TRUE(contains(tree, "CheckBox \"Edit Advanced Settings\""));
}

TEST_F(AccessibilityTest, BothPagesOfTheWizard)
{
    clickOn(child<QPushButton>("addProfileButton"));
    QWidget* wizard = QApplication::activeModalWidget();
    expectAllIsTold(wizard);
    EXPECT_TRUE(contains(AccessibleTree::print(wizard), "ComboBox \"Chemistry:\""));
    clickOn(childNamed<QPushButton>(wizard, "nextButton"));
    expectAllIsTold(wizard);
    wizard->close();
}

TEST_F(AccessibilityTest, GlobalSettingsEditor)
{
    child<GlobalSettingsManager>({})->on_editGlobalSettingsClicked();
    expectAllIsTold(QApplication::activeModalWidget());
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    QApplication::activeModalWidget()->close();
}

TEST_F(AccessibilityTest, TransferDialogs)
{
    for (const bool writes : {true, false}) {
        auto* dialog = new UploadDownloadDialog(writes, window.get());
        expectAllIsTold(dialog);
        EXPECT_TRUE(contains(AccessibleTree::print(dialog), "ComboBox \"Choose a COM Port:\""));
        EXPECT_TRUE(contains(AccessibleTree::print(dialog), "ProgressBar \"Progress\""));
        dialog->close();
    }
}

TEST_F(AccessibilityTest, ResetQuestion)
{
    KelvaronResetDialog dialog("Done!", "COM7", window.get());
    dialog.show();
    expectAllIsTold(&dialog);
}

TEST_F(AccessibilityTest, FirmwareToolWithItsOptions)
{
    auto* tool = new KelvaronFirmwareToolWindow(window.get());
    expectAllIsTold(tool);
    clickOn(childNamed<QPushButton>(tool, "advancedOptionsButton"));
    childNamed<QWidget>(tool, "consoleOut")->show();
    childNamed<QWidget>(tool, "uploadCM")->show();
    expectAllIsTold(tool);
    DialogScript script;
    expectToldIn(script);
    clickOn(childNamed<QPushButton>(tool, "helpButtonMac"));
    script.finish();
    tool->close();
}

TEST_F(AccessibilityTest, UpdateCheck)
{
    HttpServer server;
    NewFirmwareChecker::NewFirmwareChecker::setServer(server.address());
    DialogScript script;
    auto* dialog = new NewFirmwareCheckerDialog(window.get());
    expectAllIsTold(dialog);
    EXPECT_TRUE(contains(AccessibleTree::print(dialog), "ProgressBar \"Progress\""));
    dialog->close();
    NewFirmwareChecker::NewFirmwareChecker::setServer({});
}

TEST_F(AccessibilityTest, MessagesAndQuestions)
{
    DialogScript script;
    expectToldIn(script);
    MessageDialogs::helpKelvaronProfileEditor(window.get());
    expectToldIn(script);
    MessageDialogs::aboutKelvaronProfileEditor(window.get());
    expectToldIn(script);
    MessageDialogs::askDeleteAllProfiles(window.get());
    expectToldIn(script);
    MessageDialogs::askAppendProfiles(window.get());
}

// The tree itself must be able to fail.

TEST(AccessibleTree, FindsSilentControls)
{
    QWidget window;
    auto* button = new QPushButton(&window);
    auto* box = new QComboBox(&window);
    box->addItem("A");
    window.show();
    EXPECT_EQ(AccessibleTree::faults(&window).size(), 4);
    button->setAccessibleName("Go");
    box->setAccessibleName("Way");
    EXPECT_EQ(AccessibleTree::faults(&window).size(), 2);
    button->setToolTip("Goes");
    box->setAccessibleDescription("Where to");
    EXPECT_EQ(AccessibleTree::faults(&window), QStringList());
    button->hide();
    EXPECT_FALSE(AccessibleTree::print(&window).contains("Go"));
}
