#pragma once

#include "firmware/flashoutput.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QString>

#include <ctime>
#include <functional>
#include <memory>

class PortTurn;
class QFile;
class QProcess;
class QTimer;
class QWidget;

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

namespace FirmwareTool
{
/// Writes the firmware of a bundle file to the charger: one run of the uploader erases, programs
/// and verifies. Its progress is known only from its standard output; the flasher shows it on the
/// form of the firmware tool window. Known failures in the output end the run with an error, and so
/// does a watchdog when the output stops.
///
/// Each run writes a log file in the folder "logs". Everything happens in the working folder.
class FirmwareFlasher : public QObject
{
    Q_OBJECT

public:
    /// Seconds since the epoch.
    using Clock = std::function<std::time_t()>;

    /// `parent` is the firmware tool window; the parent of message boxes. `form` is borrowed and
    /// must exist as long as the window receives events.
    FirmwareFlasher(QObject* parent, Ui::KelvaronFirmwareToolWindow* form);
    ~FirmwareFlasher() override;

    /// Sets the firmware file; an empty path means none and becomes "NOPATH".
    void setHexPath(const QString& path);
    QString getHexPath() const { return hexPath; }

    /// Returns "Path : " and the path.
    QString toString() const;

    void setComPort(const QString& port) { comPort = port; }

    /// Sets whether the profiles stored in the charger are replaced.
    void setDeleteProfiles(bool overwrite) { overwritesProfiles = overwrite; }

    /// Replaces the system's clock for the watchdog.
    void setClock(Clock newClock) { clock = std::move(newClock); }

    /// Starts a run when the port is free; abandons a run that is still going on. Throws
    /// std::runtime_error if a file of an earlier run cannot be replaced. If the run had to wait,
    /// error 10 is shown and the window is closed instead.
    void startFlashing();

    /// Ends a run in progress without a message.
    void giveUp();

signals:
    /// Emitted once per run when the flash was verified.
    void flashed();

    /// Emitted when a run, successful or not, is over and the user has seen its result. Not emitted
    /// for an abandoned run.
    void ended();

public slots:
    /// Reads what the uploader has printed.
    void readStream();

    /// Ends the run if the uploader has printed nothing for too long.
    void checkAppFrozen();

    /// Shows that the current stage was entered.
    void updateGUI();

    /// Resets the form to its state before a run.
    void cleanUI();

    void initializeSuplLogFile();

    /// Extracts the files that the flash needs. If the firmware file or one of its parts is
    /// missing, shows the error, changes nothing and returns false. The uploader reports a part
    /// that could not be written.
    bool extractRequiredFiles();

    void startTimeoutTimer();

    /// Asks whether to reset the charger.
    void chargingCompleteDialogueBox();

private:
    using Error = void (*)(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    void beginRun();
    void refuse(const QString& holder);
    void startUploader();
    void showProgress(const char* chunk);
    void enterNextStage();
    void abort(Error showError);
    void finish();
    void endRun();
    void letUploaderEnd();
    void release();
    void report(const std::function<void()>& show);
    void stopWatchdog();
    QWidget* window() const;

    std::unique_ptr<QFile> logFile;
    QString hexPath;
    QString comPort;
    bool overwritesProfiles = false;
    QPointer<PortTurn> turn;
    QPointer<QProcess>
        process; ///< a child of this object's parent; null while waiting for the port
    QByteArray lastChunk;
    Ui::KelvaronFirmwareToolWindow* ui;
    int stage = FlashOutput::ERASING; ///< a FlashOutput::Stage
    bool isStarting = false;          ///< startFlashing() can still throw to its caller
    std::time_t lastActivity = 0;
    QTimer* watchdog = nullptr; ///< a child of this object
    Clock clock;
};
} // namespace FirmwareTool
