#pragma once

#include "firmware/kelvaronfirmwaretoolwindow.h"
#include "support/fakeports.h"
#include "support/gui/flashertest.h"
#include "transfer/comdevicewatcher.h"

using FirmwareTool::KelvaronFirmwareToolWindow;

inline const QString toolTitle = "Kelvaron Firmware Tool";
inline const QString damagedText =
    "The selected file is damaged or is not a Kelvaron firmware file. "
    "Nothing has been changed. Please choose a different one.";
inline const QString replaceText =
    "Flashing Firmware Version 0.9x will cause your profiles to be replaced with default profiles. "
    "To preserve existing profiles, save a backup first. Continue?";
inline const QStringList filters = {"Kelvaron Firmware Files (*.kelvaron)", "All Files (*.*)"};

class FirmwareToolWindowTest : public ::testing::Test
{
protected:
    FirmwareToolWindowTest() : uploader(folder.path()) { open(); }

    ~FirmwareToolWindowTest() override
    {
        delete window;
        if (!qApp->findChildren<FirmwareTool::FinishingRun*>().isEmpty()) {
            uploader.run("exit"); // it has reported its result and may end by itself
        }
        EXPECT_TRUE(uploader.waitForEnd()) << "the uploader was left behind";
        expectNoWindowLeft();
    }

    void open()
    {
        window = new KelvaronFirmwareToolWindow(nullptr);
        QApplication::setActiveWindow(window);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window, patience));
        setClock([] { return std::time_t(0); }); // the machine may be slow
    }

    /// Replaces the clock by which the watchdog counts.
    void setClock(const FirmwareTool::FirmwareFlasher::Clock& clock) const
    {
        window->findChild<FirmwareTool::FirmwareFlasher*>()->setClock(clock);
    }

    template <typename T>
    T* child(const QString& name) const
    {
        return childNamed<T>(window.data(), name);
    }

    QString label(const QString& name) const { return child<QLabel>(name)->text(); }
    QPushButton* submit() const { return child<QPushButton>("submitButton"); }
    QLineEdit* input() const { return child<QLineEdit>("fileInputBox"); }
    QComboBox* ports() const { return child<QComboBox>("comPortsDropdown"); }

    QStringList portNames() const
    {
        QStringList names;
        for (int i = 0; i < ports()->count(); ++i) {
            names.append(ports()->itemText(i));
        }
        return names;
    }

    /// The port watcher checks the ports that the test has changed.
    void lookAtPorts() const
    {
        auto* watcher = window->findChild<COMDeviceWatcher*>();
        ASSERT_NE(watcher, nullptr);
        watcher->onTimerFired();
    }

    /// A firmware file in a folder of its own.
    QString firmware(const QString& name = "v1.5.kelvaron",
                     const QByteArray& bytes = firmwareBundle().bytes()) const
    {
        const QString path = firmwareFolder.filePath(name);
        writeFile(path, bytes);
        return path;
    }

    void type(const QString& path) const { typeOver(input(), path); }

    void expectStarted()
    {
        uploader.waitForStart();
        EXPECT_FALSE(submit()->isEnabled());
        EXPECT_TRUE(uploader.isRunning());
    }

    void expectNotStarted() const
    {
        EXPECT_TRUE(submit()->isEnabled());
        EXPECT_FALSE(QFile::exists("logs"));
        EXPECT_FALSE(QFile::exists("hexToFlash.hex"));
    }

    /// Ends the run with an error.
    void failFlash()
    {
        DialogScript script;
        script.expectMessage("Flashing Error!",
                             "Cannot open COM port. Please try selecting a different one.");
        uploader.print("Can not open comport");
        EXPECT_TRUE(waitFor([this] { return submit()->isEnabled(); }));
        uploader.run("exit");
        EXPECT_TRUE(uploader.waitForEnd());
    }

    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
    FakePorts system{{"A", "B", "C"}};
    SteppedUploader uploader;
    QPointer<KelvaronFirmwareToolWindow> window;
};
