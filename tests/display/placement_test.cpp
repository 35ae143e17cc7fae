// Where the window manager places windows with a large font size of the desktop.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/display/frame.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "transfer/uploaddownloaddialog.h"

#include <QScreen>

using FirmwareTool::KelvaronFirmwareToolWindow;
using UploadDownload::UploadDownloadDialog;

class PlacementOnDisplayTest : public MainWindowTest
{
protected:
    PlacementOnDisplayTest()
    {
        QFont large = before;
        large.setPointSizeF(24);
        QApplication::setFont(large);
        start();
    }
    ~PlacementOnDisplayTest() override { QApplication::setFont(before); }

    static void expectPlacedOnScreen(const QWidget* shown)
    {
        ASSERT_NE(shown, nullptr);
        ASSERT_TRUE(waitFor([&] { return shown->isActiveWindow(); }));
        const QSize placed = shown->size();
        const QRect area = shown->screen()->availableGeometry();
        EXPECT_TRUE(waitFor([&] { return area.contains(withFrame(*shown)); }))
            << shown->x() << ',' << shown->y();
        QCoreApplication::processEvents();
        EXPECT_EQ(shown->size(), placed) << "grown after it was placed";
    }

    const QFont before = QApplication::font();
    const FakePorts ports{{"/dev/serial/by-id/usb-Programming_Cable_of_the_Workshop-if00-port0"}};
};

TEST_F(PlacementOnDisplayTest, TransfersOpenWithTheirTitleBarOnTheScreen)
{
    for (int i = 0; i < 12; ++i) {
        auto* dialog = new UploadDownloadDialog(i % 2 == 0, window.get());
        expectPlacedOnScreen(dialog);
        dialog->close();
        flushDeletions();
    }
}

TEST_F(PlacementOnDisplayTest, FirmwareToolOpensOverTheMiddleOfTheWindow)
{
    trigger(command("actionFlashFirmware"));
    auto* tool = window->findChild<KelvaronFirmwareToolWindow*>();
    expectPlacedOnScreen(tool);
    const QRect area = window->screen()->availableGeometry();
    const QPoint away = withFrame(*tool).center() - withFrame(*window).intersected(area).center();
    constexpr int frames = 40; // pixels, of both windows
    EXPECT_LE(away.manhattanLength(), frames);
    tool->close();
}
