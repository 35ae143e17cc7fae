// The choices in the firmware tool during a flash, and where the tool opens.

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/fakeports.h"
#include "support/gui/flashertest.h"

#include <QAction>
#include <QScreen>

using FirmwareTool::FirmwareFlasher;
using FirmwareTool::KelvaronFirmwareToolWindow;

class FlashChoicesTest : public ::testing::Test
{
protected:
    FlashChoicesTest() : uploader(folder.path())
    {
        tool = new KelvaronFirmwareToolWindow(nullptr);
        QApplication::setActiveWindow(tool);
        EXPECT_TRUE(QTest::qWaitForWindowActive(tool, patience));
        tool->findChild<FirmwareFlasher*>()->setClock([] { return std::time_t(0); });
    }

    ~FlashChoicesTest() override
    {
        delete tool;
        if (!qApp->findChildren<FirmwareTool::FinishingRun*>().isEmpty()) {
            uploader.run("exit"); // it has reported its result and may end by itself
        }
        EXPECT_TRUE(uploader.waitForEnd()) << "the uploader was left behind";
        expectNoWindowLeft();
    }

    /// Types the path of a firmware file of these bytes and presses the button.
    void start(const QByteArray& bytes = firmwareBundle().bytes())
    {
        const QString path = firmwareFolder.filePath("v1.5.kelvaron");
        writeFile(path, bytes);
        typeOver(childNamed<QLineEdit>(tool, "fileInputBox"), path);
        clickOn(submit());
    }

    /// Makes the uploader print a chunk and waits for the mark of the stage that the chunk ends.
    void print(const QByteArray& chunk, const QString& mark)
    {
        uploader.print(chunk);
        auto* label = childNamed<QLabel>(tool, mark);
        EXPECT_TRUE(waitFor([label] { return label->isVisible(); })) << chunk;
    }

    QPushButton* submit() const { return childNamed<QPushButton>(tool, "submitButton"); }

    /// The choices that can be made.
    QStringList choices() const
    {
        QStringList names;
        for (const char* name : {"fileInputBox", "selectFileButton", "comPortsDropdown"}) {
            if (childNamed<QWidget>(tool, name)->isEnabled()) {
                names.append(name);
            }
        }
        if (childNamed<QAction>(tool, "actionLoad_File")->isEnabled()) {
            names.append("actionLoad_File");
        }
        return names;
    }

    const QStringList all = {"fileInputBox", "selectFileButton", "comPortsDropdown",
                             "actionLoad_File"};
    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
    const FakePorts ports{{"A", "B"}};
    SteppedUploader uploader;
    QPointer<KelvaronFirmwareToolWindow> tool;
};

TEST_F(FlashChoicesTest, AreLockedUntilAFlashFails)
{
    EXPECT_EQ(choices(), all);
    start();
    uploader.waitForStart();
    EXPECT_EQ(choices(), QStringList());
    DialogScript script;
    script.thenDo([this](QWidget& box) {
        EXPECT_EQ(choices(), QStringList());
        box.close();
    });
    uploader.print("Can not open comport");
    EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
    EXPECT_EQ(choices(), all);
}

TEST_F(FlashChoicesTest, AreLockedUntilTheQuestionAfterAFlashIsAnswered)
{
    start();
    uploader.waitForStart();
    DialogScript script;
    script.thenDo([this](QWidget& reset) {
        EXPECT_EQ(choices(), QStringList());
        reset.close();
    });
    print("All flash above bldr erased\n", "eraseFlashCM");
    print("hex file loaded\n", "loadFileCM");
    print("Flash Write success\n", "uploadCM");
    print("Verified Flash OK\n", "verifyCM");
    EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
    EXPECT_EQ(choices(), all);
}

TEST_F(FlashChoicesTest, AreFreeAfterAFileWithoutAnImage)
{
    DialogScript script;
    script.expectMessage("Flashing Error!", "Firmware file not found!");
    start(BundleText().key("VERSION", "1.5").section("a = b\n").bytes());
    EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
    EXPECT_EQ(choices(), all);
}

TEST(FirmwareToolPlaceTest, OpensOverTheMiddleOfItsWindow)
{
    const FakePorts ports{{"A"}};
    QWidget owner;
    owner.setGeometry(30, 120, 740, 400);
    owner.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&owner, patience));
    const QPointer<QWidget> tool = new KelvaronFirmwareToolWindow(&owner);
    const QPoint away = tool->frameGeometry().center() - owner.frameGeometry().center();
    EXPECT_LE(away.manhattanLength(), 8); // a frame's width
    tool->close();
}
