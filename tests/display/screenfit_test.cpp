// Every window is within the free area of its screen, including the window manager's frame. Run on
// screens of several sizes and scale factors.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "messagedialogs.h"
#include "settingsui/globalsettingsmanager.h"
#include "support/display/frame.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"

#include <QScreen>
#include <QStatusBar>

using FirmwareTool::KelvaronFirmwareToolWindow;

class ScreenFitOnDisplayTest : public MainWindowTest
{
protected:
    ScreenFitOnDisplayTest() { start(); }

    static std::string text(const QRect& area)
    {
        return QString("%1,%2 %3x%4")
            .arg(area.x())
            .arg(area.y())
            .arg(area.width())
            .arg(area.height())
            .toStdString();
    }

    /// The window, with its frame, as a whole on the screen, and these parts of it in the window.
    static void expectOnScreen(const QWidget* shown, const QStringList& parts)
    {
        ASSERT_NE(shown, nullptr);
        const QRect area = shown->screen()->availableGeometry();
        ASSERT_TRUE(waitFor([&] { return shown->isActiveWindow(); }));
        const auto isWithin = [&] { return area.contains(withFrame(*shown)); };
        EXPECT_TRUE(waitFor(isWithin)) << text(withFrame(*shown)) << " in " << text(area);
        for (const QString& name : parts) {
            const auto* part = childNamed<QWidget>(shown, name);
            const QRect place(part->mapTo(shown, QPoint()), part->size());
            EXPECT_TRUE(shown->rect().contains(place)) << name << ' ' << text(place);
        }
    }

    /// As far as the smallest size of the main window allows.
    bool hasRoomForTheMainWindow() const
    {
        const QSize room = window->screen()->availableSize();
        return room.width() > 740 && room.height() > 400;
    }

    const FakePorts ports{{"COM7"}};
};

TEST_F(ScreenFitOnDisplayTest, MainWindow)
{
    if (!hasRoomForTheMainWindow()) {
        EXPECT_EQ(window->size(), QSize(712, 350));
        return;
    }
    makeProfile("First");
    expectOnScreen(window.get(),
                   {"editProfileButton", "saveChangesButton", "addProfileButton", "statusBar"});
    window->showMaximized();
    ASSERT_TRUE(waitFor([this] { return window->isMaximized(); }));
    expectOnScreen(window.get(), {"saveChangesButton", "statusBar"});
    window->showNormal();
    ASSERT_TRUE(waitFor([this] { return !window->isMaximized(); }));
    expectOnScreen(window.get(), {"saveChangesButton", "statusBar"});
}

TEST_F(ScreenFitOnDisplayTest, ScaleIsTakenAsItIs)
{
    bool isSet = false;
    const int dpi = qEnvironmentVariableIntValue("QT_FONT_DPI", &isSet);
    EXPECT_DOUBLE_EQ(window->devicePixelRatioF(), (isSet ? dpi : 96) / 96.0);
}

TEST_F(ScreenFitOnDisplayTest, BothPagesOfTheWizard)
{
    clickOn(child<QPushButton>("addProfileButton"));
    QWidget* wizard = QApplication::activeModalWidget();
    const QStringList buttons = {"backButton", "nextButton", "cancelButton"};
    expectOnScreen(wizard, buttons);
    clickOn(childNamed<QPushButton>(wizard, "nextButton"));
    expectOnScreen(wizard, buttons);
    wizard->close();
}

TEST_F(ScreenFitOnDisplayTest, FirmwareTool)
{
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    const QStringList parts = {"submitButton", "selectFileButton", "advancedOptionsButton"};
    expectOnScreen(tool, parts);
    clickOn(childNamed<QPushButton>(tool, "advancedOptionsButton"));
    expectOnScreen(tool, parts);
    tool->close();
}

TEST_F(ScreenFitOnDisplayTest, TransferDialog)
{
    trigger(command("actionReadProfiles"));
    auto* dialog = window->findChild<UploadDownload::UploadDownloadDialog*>();
    expectOnScreen(dialog, {"okButton", "comPortsDropdown"});
    dialog->close();
}

TEST_F(ScreenFitOnDisplayTest, GlobalSettingsEditor)
{
    child<GlobalSettingsManager>({})->on_editGlobalSettingsClicked();
    expectOnScreen(QApplication::activeModalWidget(), {"okPushButton", "cancelPushButton"});
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    QApplication::activeModalWidget()->close();
}

TEST_F(ScreenFitOnDisplayTest, MessagesWithMuchText)
{
    for (const char* name : {"actionHelp_2", "actionAbout"}) {
        DialogScript script;
        script.thenDo([](QWidget& box) {
            expectOnScreen(&box, {});
            box.close();
        });
        trigger(command(name));
    }
}
