// Every window with a large font size of the desktop.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "messagedialogs.h"
#include "settingsui/globalsettingsmanager.h"
#include "support/fakeports.h"
#include "support/gui/cuttexts.h"
#include "support/gui/httpserver.h"
#include "support/gui/installation.h"
#include "transfer/kelvaronresetdialog.h"
#include "transfer/uploaddownloaddialog.h"
#include "updatecheck/newfirmwarechecker.h"
#include "updatecheck/newfirmwarecheckerdialog.h"

#include <QMenuBar>
#include <QScreen>

using FirmwareTool::KelvaronFirmwareToolWindow;
using NewFirmwareChecker::NewFirmwareCheckerDialog;
using UploadDownload::UploadDownloadDialog;

/// The desktop's font size in points.
class LargeFontsTest : public MainWindowTest, public ::testing::WithParamInterface<int>
{
protected:
    LargeFontsTest()
    {
        QFont font = before;
        font.setPointSize(GetParam());
        QApplication::setFont(font);
        start();
    }
    ~LargeFontsTest() override { QApplication::setFont(before); }

    static void settle()
    {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::processEvents(); // one layout may trigger another
        }
    }

    static void expectAllTextsFit(QWidget* shown)
    {
        ASSERT_NE(shown, nullptr);
        settle();
        EXPECT_EQ(cutTexts(shown), QStringList()) << shown->metaObject()->className();
    }

    const QFont before = QApplication::font();
    const FakePorts ports{{"COM7"}};
};

TEST_P(LargeFontsTest, MainWindowAtItsSmallest)
{
    window->resize(712, 350);
    expectAllTextsFit(window.get());
    EXPECT_EQ(window->size(), QSize(712, 350));
    makeProfile("First");
    expectAllTextsFit(window.get());
    clickOn(child<QPushButton>("editProfileButton"));
    expectAllTextsFit(window.get());
    EXPECT_EQ(window->size(), QSize(712, 350));
}

TEST_P(LargeFontsTest, MainWindowWithRoomHasTheDesktopsLetters)
{
    makeProfile("First");
    window->resize(2400, 1600);
    settle();
    EXPECT_EQ(child<QPushButton>("editProfileButton")->font().pointSize(), GetParam());
    EXPECT_GT(child<QLabel>("profileSettingsTitle")->font().pointSize(), GetParam());
    expectAllTextsFit(window.get());
    window->resize(712, 350);
    settle();
    window->resize(2400, 1600);
    settle();
    EXPECT_EQ(child<QPushButton>("editProfileButton")->font().pointSize(), GetParam());
}

TEST_P(LargeFontsTest, RowsKeepTheirHeightAndShowTheirTexts)
{
    window->resize(2400, 1600);
    makeProfile("Profile");
    settle();
    const QWidget* first = row(0);
    EXPECT_EQ(list()->sizeHintForRow(0), 46);
    for (const char* name : {"profileTitle", "profileSubtitle"}) {
        const auto* label = childNamed<QLabel>(first, name);
        EXPECT_GE(label->height(), label->fontMetrics().height()) << name;
    }
    for (const char* name : {"defaultProfileButton", "deleteProfileButton"}) {
        const auto* button = childNamed<QPushButton>(first, name);
        const QSize letter = button->fontMetrics().boundingRect(button->text()).size();
        EXPECT_GE(button->width(), letter.width()) << name;
        EXPECT_GE(button->height(), letter.height()) << name;
    }
}

TEST_P(LargeFontsTest, BothPagesOfTheWizard)
{
    clickOn(child<QPushButton>("addProfileButton"));
    QWidget* wizard = QApplication::activeModalWidget();
    expectAllTextsFit(wizard);
    clickOn(childNamed<QPushButton>(wizard, "nextButton"));
    expectAllTextsFit(wizard);
    wizard->close();
}

TEST_P(LargeFontsTest, GlobalSettingsEditor)
{
    child<GlobalSettingsManager>({})->on_editGlobalSettingsClicked();
    expectAllTextsFit(QApplication::activeModalWidget());
    DialogScript script;
    script.expectQuestion("Cancel Editing?",
                          "All your changes will be lost. Do you want to continue?", "Yes");
    QApplication::activeModalWidget()->close();
}

TEST_P(LargeFontsTest, TransferAndReset)
{
    auto* dialog = new UploadDownloadDialog(true, window.get());
    expectAllTextsFit(dialog);
    dialog->close();
    KelvaronResetDialog reset("Profiles successfully written to the Kelvaron!", "COM7",
                              window.get());
    reset.show();
    expectAllTextsFit(&reset);
}

TEST_P(LargeFontsTest, FirmwareToolInItsFixedHeight)
{
    auto* tool = new KelvaronFirmwareToolWindow(window.get());
    expectAllTextsFit(tool);
    EXPECT_EQ(tool->height(), 245);
    clickOn(childNamed<QPushButton>(tool, "advancedOptionsButton"));
    expectAllTextsFit(tool);
    EXPECT_EQ(tool->height(), 273);
    tool->close();
}

TEST_P(LargeFontsTest, UpdateCheckInItsFixedSize)
{
    HttpServer server;
    NewFirmwareChecker::NewFirmwareChecker::setServer(server.address());
    auto* dialog = new NewFirmwareCheckerDialog(window.get());
    expectAllTextsFit(dialog);
    EXPECT_EQ(dialog->size(), QSize(333, 206));
    dialog->close();
    NewFirmwareChecker::NewFirmwareChecker::setServer({});
}

TEST_P(LargeFontsTest, LongMessageStaysOnTheScreen)
{
    DialogScript script;
    script.thenDo([](QWidget& box) {
        settle();
        const QSize screen = box.screen()->availableSize();
        EXPECT_LE(box.height(), screen.height());
        EXPECT_LE(box.width(), screen.width());
        EXPECT_EQ(cutTexts(&box), QStringList());
        box.close();
    });
    MessageDialogs::helpKelvaronProfileEditor(window.get());
}

INSTANTIATE_TEST_SUITE_P(Points, LargeFontsTest, ::testing::Values(9, 20, 26));
