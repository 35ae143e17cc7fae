#pragma once

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
class QProgressBar;
class QTimer;
class QWidget;

namespace Ui
{
class KelvaronFirmwareToolWindow;
}

namespace FirmwareTool
{
/// Writes the firmware of a bundle file into the charger: one run of the uploader erases, programs
/// and verifies, and its standard output alone tells how far it has come. The flasher shows that on
/// the form of the firmware tool window. Known failures in the output end the run with an error; so
/// does a watchdog when the output has gone quiet.
///
/// Each run writes a log file in the folder "logs". Everything happens in the working folder.
class FirmwareFlasher : public QObject
{
    Q_OBJECT

public:
    /// Seconds since the epoch.
    using Clock = std::function<std::time_t()>;

    /// `parent` is the firmware tool window; message boxes stand over it. `form` is borrowed and has
    /// to live as long as the window takes events.
    FirmwareFlasher(QObject* parent, Ui::KelvaronFirmwareToolWindow* form);
    ~FirmwareFlasher() override;

    /// The firmware file; an empty path counts as none, "NOPATH".
    void setHexPath(const QString& path);
    QString getHexPath() const { return hexPath; }

    /// "Path : " and the path.
    QString toString() const;

    void setComPort(const QString& port) { comPort = port; }

    /// Whether the profiles stored in the charger are replaced.
    void setDeleteProfiles(bool overwrite) { overwritesProfiles = overwrite; }

    /// Replaces the system's clock by which the watchdog counts.
    void setClock(Clock newClock) { clock = std::move(newClock); }

    /// Starts a run when the port is free; one that is still going on is given up. Throws
    /// std::runtime_error when a file of an earlier run is in the way; of a run that had to wait, error
    /// 10 is shown and the window closed instead.
    void startFlashing();

    /// Ends a run that is still going on, without a message.
    void giveUp();

signals:
    /// A flash was verified; once a run.
    void flashed();

    /// A run is over, successful or not, and the user has seen its result. Not emitted for a run that
    /// was given up.
    void ended();

public slots:
    /// Takes in what the uploader has printed.
    void readStream();

    /// Ends the run when it has been quiet for too long.
    void checkAppFrozen();

    /// Shows that the stage of this moment was entered.
    void updateGUI();

    /// Shows a run that has not begun.
    void cleanUI();

    void initializeSuplLogFile();

    /// False, with the fitting error and nothing changed, when the firmware file is missing or lacks
    /// a part that the flash needs. A part that could not be written is reported by the uploader.
    bool extractRequiredFiles();

    void startTimeoutTimer();

    /// Asks whether the charger is to be reset.
    void chargingCompleteDialogueBox();

private:
    enum Stage : int
    {
        ERASING = 1,
        LOADING,
        UPLOADING,
        VERIFYING,
        VERIFIED,
        FINISHED
    };
    using Error = void (*)(Ui::KelvaronFirmwareToolWindow* form, QWidget* parent);

    void beginRun();
    void refuse(const QString& holder);
    void startUploader();
    void readWhileErasing(const char* chunk);
    void readWhileLoading(const char* chunk);
    void readWhileUploading(const char* chunk);
    void readWhileVerifying(const char* chunk);
    void showProgress(QProgressBar* bar, const char* chunk);
    void enter(Stage next, const char* trace);
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
    QPointer<QProcess> process; ///< a child of this object's parent; none while the port is in use
    QByteArray lastChunk;
    Ui::KelvaronFirmwareToolWindow* ui;
    int stage = ERASING;
    bool isStarting = false; ///< the caller of startFlashing() takes its exceptions
    std::time_t lastActivity = 0;
    QTimer* watchdog = nullptr; ///< a child of this object
    Clock clock;
};
} // namespace FirmwareTool
