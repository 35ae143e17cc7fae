// The main window's commands.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/gui/windowtest.h"

#include <QTimer>

using FirmwareTool::KelvaronFirmwareToolWindow;

TEST_F(WindowTest, AboutAndHelpShowTheirMessages)
{
    const QList<QPair<QString, QString>> titles = {{"actionAbout", "About Kelvaron Profile Editor"},
                                                   {"actionHelp_2", "Basic Usage"},
                                                   {"actionHelp", "Basic Usage"}};
    for (const auto& [name, title] : titles) {
        const QString expected = title;
        DialogScript script;
        script.thenPress("OK", [&](const QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), expected);
            EXPECT_EQ(box.parentWidget(), window.get());
        });
        trigger(command(name));
    }
}

TEST_F(WindowTest, AboutNamesTheBundleInUse)
{
    DialogScript script;
    script.thenPress("OK", [](const QMessageBox& box) {
        EXPECT_TRUE(contains(box.text(), "Kelvaron Bundle Version: v1.0.0<br>"));
    });
    trigger(command("actionAbout"));
}

TEST_F(WindowTest, AboutWorksDuringAnEdit)
{
    makeProfile("Torch");
    edit();
    DialogScript script;
    script.thenPress("OK");
    trigger(command("actionAbout"));
    script.finish();
    expectLocked(true);
}

TEST_F(WindowTest, DeleteAllIsAskedFromMenuAndToolbar)
{
    for (QAction* action :
         {command("actionDeleteAllProfiles"), toolbarCommand("Delete all Profiles")}) {
        makeProfile("Torch");
        for (const char* answer : {"No", "Yes"}) {
            DialogScript script;
            script.expectQuestion(
                "Delete all profiles?",
                "All profiles will be deleted. This operation cannot be undone. Continue?", answer);
            trigger(action);
            EXPECT_EQ(list()->count(), answer == QString("No") ? 1 : 0);
        }
    }
}

TEST_F(WindowTest, FileCommandsOpenTheirDialogs)
{
    const QStringList filters = {"XML files (*.xml)", "Any files (*.*)"};
    for (QAction* action : {command("actionExportXML"), toolbarCommand("Save Profiles to File")}) {
        DialogScript script;
        script.expectExportDialog("XML", "saved_profiles", "");
        trigger(action);
    }
    for (QAction* action :
         {command("actionImportXML"), toolbarCommand("Load Profiles from File")}) {
        DialogScript script;
        script.expectImportDialog("XML", "saved_profiles", "");
        trigger(action);
    }
}

TEST_F(WindowTest, ExitEndsTheEventLoopDuringAnEditWithoutAQuestion)
{
    makeProfile("Torch");
    edit();
    const DialogScript nothing;
    QTimer::singleShot(0, window.get(), [this] { trigger(command("actionExit")); });
    bool isLate = false;
    QTimer::singleShot(patience, window.get(), [&isLate] {
        isLate = true;
        QCoreApplication::exit(1);
    });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(isLate);
}

TEST_F(WindowTest, ClosingDuringAnEditAsksNothing)
{
    makeProfile("Torch");
    edit();
    const DialogScript nothing;
    EXPECT_TRUE(window->close());
}

// The firmware tool

class FirmwareToolTest : public WindowTest
{
protected:
    QList<KelvaronFirmwareToolWindow*> tools() const
    {
        return window->findChildren<KelvaronFirmwareToolWindow*>();
    }
};

TEST_F(FirmwareToolTest, EachPressOpensAnotherWindow)
{
    trigger(command("actionFlashFirmware"));
    ASSERT_EQ(tools().size(), 1);
    EXPECT_TRUE(tools().at(0)->isVisible()); // and the command has returned
    trigger(command("actionFlashFirmware"));
    ASSERT_EQ(tools().size(), 2);
    for (KelvaronFirmwareToolWindow* tool : tools()) {
        EXPECT_TRUE(tool->isVisible());
        EXPECT_EQ(tool->parent(), window.get());
        tool->close();
    }
    flushDeletions();
    EXPECT_TRUE(tools().isEmpty());
}

TEST_F(FirmwareToolTest, OpenToolGoesWithTheMainWindow)
{
    trigger(command("actionFlashFirmware"));
    window.reset();
    expectNoWindowLeft();
}
