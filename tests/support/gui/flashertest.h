#pragma once

#include "firmware/finishingrun.h"
#include "firmware/firmwareflasher.h"
#include "support/bundletext.h"
#include "support/files.h"
#include "support/gui/dialogscript.h"
#include "support/gui/steppeduploader.h"
#include "support/gui/widgets.h"
#include "support/standardoutputcapture.h"
#include "support/waiting.h"
#include "ui_kelvaronfirmwaretoolwindow.h"

#include <QSignalSpy>

#include <memory>

/// A firmware file with all its parts.
inline BundleText firmwareBundle(const QByteArray& schema = Samples::schema())
{
    return BundleText()
        .key("VERSION", "1.5")
        .section("overwrite = yes\n")
        .section(schema)
        .section(":020000040000FA\n:00000001FF\n")
        .section("overwrite = no\n");
}

/// The error that names the log of a quiet run.
inline QString frozenText(const QString& logName)
{
    return "Please make sure you selected a valid Kelvaron firmware file, the correct COM port, "
           "<br>and it is in bootloader mode.<br><br>"
           + QString(19, ' ') + "The log file \"logs/" + logName
           + "\"<br>will contain more information";
}

/// The names of the logs in the working folder.
inline QStringList logNames()
{
    return QDir("logs").entryList(QDir::Files, QDir::Name);
}

/// What the form shows of the four stages: "busy" or value and maximum, and the mark.
inline QStringList stagesOf(const Ui::KelvaronFirmwareToolWindow& form)
{
    const auto stage = [](const QProgressBar* bar, const QLabel* mark) {
        const QString progress = bar->minimum() == 0 && bar->maximum() == 0
                                     ? QString("busy")
                                     : QString("%1/%2").arg(bar->value()).arg(bar->maximum());
        return mark->isHidden() ? progress : progress + ' ' + mark->text();
    };
    return {stage(form.eraseFlashPB, form.eraseFlashCM), stage(form.loadFilePB, form.loadFileCM),
            stage(form.uploadPB, form.uploadCM), stage(form.verifyPB, form.verifyCM)};
}

/// The display of the stages in the course of a flash.
inline const QStringList erasing = {"busy", "0/100", "0/100", "0/100"};
inline const QStringList loading = {"100/100 √", "busy", "0/100", "0/100"};
inline const QStringList uploading = {"100/100 √", "100/100 √", "0/100", "0/100"};
inline const QStringList verifying = {"100/100 √", "100/100 √", "100/100 √", "0/100"};
inline const QStringList verified = {"100/100 √", "100/100 √", "100/100 √", "100/100 √"};

/// The flasher on the form of its window, with an uploader that prints what the test says.
class FlasherTest : public ::testing::Test
{
protected:
    FlasherTest() : uploader(folder.path())
    {
        window = std::make_unique<QMainWindow>();
        form.setupUi(window.get());
        flasher = new FirmwareTool::FirmwareFlasher(window.get(), &form);
        flasher->setClock([this] { return now; });
        flasher->setComPort("/dev/ttyUSB7");
        useFirmware(firmwareBundle().bytes());
        window->show();
        QApplication::setActiveWindow(window.get());
    }

    ~FlasherTest() override
    {
        window.reset();
        if (!qApp->findChildren<FirmwareTool::FinishingRun*>().isEmpty()) {
            uploader.run("exit"); // it has reported its result and may end by itself
        }
        EXPECT_TRUE(uploader.waitForEnd()) << "the uploader was left behind";
        expectNoWindowLeft();
    }

    void useFirmware(const QByteArray& bytes)
    {
        const QString path = firmwareFolder.filePath("v1.5.kelvaron");
        writeFile(path, bytes);
        flasher->setHexPath(path);
    }

    /// Starts a flash as the start button does.
    void start()
    {
        form.submitButton->setEnabled(false);
        const QStringList before = logNames();
        flasher->startFlashing();
        const QStringList after = logNames();
        for (const QString& name : after) {
            if (!before.contains(name)) {
                logName = name; // unless the run before it began in the same second
            }
        }
        arguments = uploader.waitForStart();
    }

    /// Makes the uploader print a chunk and waits until the flasher has logged it.
    void send(const QByteArray& chunk)
    {
        const auto target = log().size() + static_cast<std::size_t>(chunk.size());
        uploader.print(chunk);
        EXPECT_TRUE(waitFor([&] { return log().size() >= target; })) << "not read: " << chunk;
    }

    /// A run that has reached this stage.
    void startAndReach(int stage)
    {
        start();
        const QList<QByteArray> milestones = {"All flash above bldr erased\n", "hex file loaded\n",
                                              "Flash Write success\n"};
        for (const QByteArray& milestone : milestones.mid(0, stage - 1)) {
            send(milestone);
        }
    }

    /// Waits until the end of the run was reported.
    void waitForReport() const
    {
        EXPECT_TRUE(waitFor([this] { return form.submitButton->isEnabled(); }));
    }

    /// The stages' display.
    QStringList stages() const { return stagesOf(form); }

    /// The bytes of the log of the last run. The names of logs do not sort by time.
    std::string log() const { return contentOf("logs/" + logName).toStdString(); }

    WorkingFolder folder;
    QTemporaryDir firmwareFolder;
    SteppedUploader uploader;
    QStringList arguments; ///< of the last run
    QString logName;       ///< of the last run
    std::unique_ptr<QMainWindow> window;
    Ui::KelvaronFirmwareToolWindow form;
    FirmwareTool::FirmwareFlasher* flasher = nullptr;
    std::time_t now = 1000000; ///< the flasher's clock
};
