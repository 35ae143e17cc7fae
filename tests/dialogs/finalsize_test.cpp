// Windows are positioned by their size when they are shown, so this must be their final size, even
// with a large font size of the desktop.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "profiles/profilewizarddialog.h"
#include "settingsui/globalsettingsdialog.h"
#include "support/fakeports.h"
#include "support/gui/editorwindow.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"

#include <QApplication>
#include <QScreen>
#include <QTest>

using FirmwareTool::KelvaronFirmwareToolWindow;
using UploadDownload::UploadDownloadDialog;

class FinalSizeTest : public ::testing::TestWithParam<int>
{
protected:
    FinalSizeTest()
    {
        QFont font = before;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
        window = std::make_unique<EditorWindow>();
    }

    ~FinalSizeTest() override
    {
        window.reset();
        flushDeletions();
        QApplication::setFont(before);
    }

    /// For a window that has just shown itself.
    static void expectFinalSize(const QWidget* shown)
    {
        ASSERT_NE(shown, nullptr);
        const QSize placed = shown->size();
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents(); // one layout may trigger another
        }
        EXPECT_TRUE(shown->isVisible());
        EXPECT_EQ(shown->size(), placed);
        const QSize screen = shown->screen()->availableSize();
        EXPECT_LE(shown->frameGeometry().width(), screen.width());
        EXPECT_LE(shown->frameGeometry().height(), screen.height());
    }

    const QFont before = QApplication::font();
    const FakePorts ports{{"/dev/serial/by-id/usb-Programming_Cable_of_the_Workshop-if00-port0"}};
    std::unique_ptr<EditorWindow> window;
};

TEST_P(FinalSizeTest, Transfers)
{
    for (const bool writes : {true, false}) {
        auto* dialog = new UploadDownloadDialog(writes, window.get());
        expectFinalSize(dialog);
        dialog->close();
    }
}

TEST_P(FinalSizeTest, ResetQuestion)
{
    KelvaronResetDialog dialog("Profiles successfully written to the Kelvaron!", "COM1",
                               window.get());
    dialog.show();
    expectFinalSize(&dialog);
}

TEST_P(FinalSizeTest, FirmwareTool)
{
    auto* tool = new KelvaronFirmwareToolWindow(window.get());
    expectFinalSize(tool);
    EXPECT_EQ(tool->height(), 245);
    clickOn(childNamed<QPushButton>(tool, "advancedOptionsButton"));
    expectFinalSize(tool);
    EXPECT_EQ(tool->height(), 273);
    tool->close();
}

TEST_P(FinalSizeTest, Wizard)
{
    clickOn(window->ui->addProfileButton);
    auto* wizard = window->findChild<ProfileWizardDialog*>();
    expectFinalSize(wizard);
    wizard->close();
}

TEST_P(FinalSizeTest, GlobalSettingsEditor)
{
    window->globalSettings->on_editGlobalSettingsClicked();
    auto* dialog = window->findChild<GlobalSettingsDialog*>();
    expectFinalSize(dialog);
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    dialog->close();
}

INSTANTIATE_TEST_SUITE_P(Points, FinalSizeTest, ::testing::Values(9, 24, 40));
