// Firmware flashed from the main window, with the simulated charger as the uploader.

#include "applicationglobalmap.h"
#include "firmware/firmwareflasher.h"
#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/fakeports.h"
#include "support/gui/installation.h"
#include "testpaths.h"

#include <QCheckBox>
#include <QProgressBar>

using FirmwareTool::FirmwareFlasher;
using FirmwareTool::KelvaronFirmwareToolWindow;

class FirmwareFlashTest : public MainWindowTest
{
protected:
    FirmwareFlashTest()
    {
        installSimulator();
        setFault("");
        start();
        trigger(command("actionFlashFirmware"));
        tool = window->findChild<KelvaronFirmwareToolWindow*>();
        EXPECT_NE(tool, nullptr);
        QApplication::setActiveWindow(tool);
    }

    void setFault(const QByteArray& line) const
    {
        writeFile("supl-faults.txt", "pace = 40%\n" + line + '\n');
    }

    static QByteArray demoBytes(const QString& name)
    {
        return ::contentOf(QString(KELVARON_DEMO_DIR) + '/' + name);
    }

    template <typename T>
    T* part(const QString& name) const
    {
        return childNamed<T>(tool.data(), name);
    }

    /// Time passes for the watchdog only when a test waits for it: the machine may be slow.
    void startFlash(const QString& firmware) const
    {
        if (!watchdogRuns) {
            tool->findChild<FirmwareFlasher*>()->setClock([] { return std::time_t(0); });
        }
        typeOver(part<QLineEdit>("fileInputBox"), firmware);
        clickOn(part<QPushButton>("submitButton"));
        EXPECT_FALSE(part<QPushButton>("submitButton")->isEnabled());
    }

    /// Waits until a stage is ticked off.
    void waitForMark(const QString& name) const
    {
        EXPECT_TRUE(waitFor([&] { return part<QLabel>(name)->isVisible(); })) << name;
    }

    void waitForEnd() const
    {
        EXPECT_TRUE(waitFor([this] { return part<QPushButton>("submitButton")->isEnabled(); }));
    }

    /// A flash of the installed demo ends with this error and can be tried again.
    void expectError(const QByteArray& fault, const QString& title, const QString& text)
    {
        expectError(installed, fault, title, text);
    }

    void expectError(const QString& firmware, const QByteArray& fault, const QString& title,
                     const QString& text)
    {
        setFault(fault);
        DialogScript script;
        script.thenPress("OK", [&](const QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), title);
            EXPECT_TRUE(contains(box.text(), text));
        });
        startFlash(firmware);
        waitForEnd();
        script.finish();
        EXPECT_TRUE(window->isVisible());
    }

    void expectSuccess() const
    {
        DialogScript script;
        script.thenDo([](QWidget& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Stay in Bootloader Mode or Reset?");
            clickOn(dialog.findChildren<QPushButton*>().at(1));
        });
        waitForEnd();
        script.finish();
        EXPECT_TRUE(part<QLabel>("verifyCM")->isVisible());
    }

    const QString installed = "v1.0.0.kelvaron";
    bool watchdogRuns = false;
    FakePorts ports{{"/dev/ttyUSB0"}};
    QPointer<KelvaronFirmwareToolWindow> tool;
};

TEST_F(FirmwareFlashTest, NewFirmwareIsFlashedAndItsBundleTakenIntoUse)
{
    QFile demo(KELVARON_DEMO_BUNDLE);
    ASSERT_TRUE(demo.open(QIODevice::ReadOnly));
    QByteArray bytes = demo.readAll();
    const int place = bytes.indexOf("1.0.0");
    ASSERT_GT(place, 0);
    bytes.replace(place, 5, "1.5.0");
    const QTemporaryDir folder;
    QFile firmware(folder.filePath("newer.kelvaron"));
    ASSERT_TRUE(firmware.open(QIODevice::WriteOnly));
    firmware.write(bytes);
    firmware.close();

    startFlash(firmware.fileName());
    EXPECT_EQ(contentOf("device.txt"), demoBytes("device_nooverwrite.txt"));
    waitForMark("eraseFlashCM");
    waitForMark("loadFileCM");
    int lastValue = 0;
    QObject::connect(part<QProgressBar>("uploadPB"), &QProgressBar::valueChanged,
                     [&lastValue](int value) {
                         EXPECT_GE(value, lastValue);
                         lastValue = value;
                     });
    waitForMark("uploadCM");
    EXPECT_EQ(lastValue, 100);
    expectSuccess();

    EXPECT_EQ(ApplicationGlobalMap::getString("bundle_version"), "1.5.0");
    EXPECT_EQ(contentOf("newer.kelvaron"), bytes);
    EXPECT_TRUE(contains(contentOf("charger-state.txt"), "resets = 1"));
    const QStringList logs = QDir(pathOf("logs")).entryList(QDir::Files);
    ASSERT_EQ(logs.size(), 1);
    const QByteArray log = contentOf("logs/" + logs.at(0));
    EXPECT_TRUE(startsWith(log, "FLASHING KELVARON FIRMWARE\n"));
    EXPECT_TRUE(contains(log, "Verified Flash OK"));

    tool->close();
    EXPECT_EQ(contentOf("device.txt"), demoBytes("device.txt"));
    EXPECT_FALSE(QFile::exists(pathOf("device_overwrite.txt")));
}

TEST_F(FirmwareFlashTest, ProfilesOfTheListComeBackAfterAFlash)
{
    tool->close();
    flushDeletions();
    makeProfile("One");
    trigger(command("actionFlashFirmware"));
    tool = window->findChild<KelvaronFirmwareToolWindow*>();
    startFlash(installed);
    waitForMark("uploadCM");
    expectSuccess();
    ASSERT_EQ(list()->count(), 1);
    EXPECT_EQ(rowTitle(0), "One");
}

TEST_F(FirmwareFlashTest, OverwritingProfilesUsesTheOtherDescription)
{
    clickOn(part<QPushButton>("advancedOptionsButton"));
    clickOn(part<QCheckBox>("deleteProfilesCB"));
    startFlash(installed);
    EXPECT_EQ(contentOf("device.txt"), demoBytes("device.txt"));
    waitForMark("uploadCM");
    expectSuccess();
}

TEST_F(FirmwareFlashTest, UploaderThatStallsIsToldWithItsLog)
{
    watchdogRuns = true;
    expectError("flash-write.stall = yes", "Unknown Error!", "The log file \"logs/outputlog-");
}

TEST_F(FirmwareFlashTest, UploaderThatCrashesIsTold)
{
    watchdogRuns = true;
    expectError("flash-write.crash = yes", "Unknown Error!", "The log file \"logs/outputlog-");
}

TEST_F(FirmwareFlashTest, PortThatCannotBeOpenedIsTold)
{
    expectError("no-port = yes", "Flashing Error!",
                "Cannot open COM port. Please try selecting a different one.");
}

TEST_F(FirmwareFlashTest, ChargerThatDoesNotAnswerIsTold)
{
    expectError("no-bootloader = yes", "Flashing Error!",
                "Incorrect COM port or Kelvaron is not in Bootloader");
}

TEST_F(FirmwareFlashTest, ChargerThatCannotBeUnderstoodIsTold)
{
    expectError("no-stx = yes", "Flashing Error!",
                "\"no stx char!\" - Known Mac OS bug. Please try again.");
}

TEST_F(FirmwareFlashTest, FailedVerificationIsToldAndTheNextFlashSucceeds)
{
    expectError("verify-fail = yes", "Flashing Error!",
                "Verification Failed. The firmware file could be corrupted.");
    setFault("");
    startFlash(installed);
    waitForMark("uploadCM");
    expectSuccess();
}

TEST_F(FirmwareFlashTest, BundleWithoutFirmwareIsRefused)
{
    installBundle("1.1", demoSchema());
    expectError("v1.1.kelvaron", "", "Flashing Error!", "Firmware file not found!");
    clickOn(part<QPushButton>("advancedOptionsButton"));
    clickOn(part<QCheckBox>("deleteProfilesCB"));
    expectError("v1.1.kelvaron", "", "Flashing Error!", "Firmware file not found!");
}

TEST_F(FirmwareFlashTest, ClosingInTheMiddleEndsTheUploaderAndTheNextFlashSucceeds)
{
    startFlash(installed);
    waitForMark("loadFileCM");
    {
        const DialogScript nothing;
        tool->close();
        flushDeletions();
        EXPECT_EQ(tool, nullptr);
        EXPECT_EQ(contentOf("device.txt"), demoBytes("device.txt"));
    }
    trigger(command("actionFlashFirmware"));
    tool = window->findChild<KelvaronFirmwareToolWindow*>();
    startFlash(installed);
    waitForMark("uploadCM");
    expectSuccess();
}
