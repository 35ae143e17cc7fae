#pragma once

#include "serialports/portturn.h"
#include "transfer/uploader.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace UploadDownload
{
/// Writes a profile image to the charger in two runs of the uploader: first the profile area is
/// erased, then the image is programmed into it. Both runs share one turn on the port and may have
/// to wait for it.
///
/// The processes become children of the worker's own parent.
class UploadProfiles : public QObject
{
    Q_OBJECT

public:
    /// `hexFilePath` is the Intel HEX file that the uploader programs.
    UploadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// Sets the content that the file must have. If it differs before a run, the file is written
    /// again: another editor in the same folder uses the same file. Without this the file is used
    /// as it is.
    void setImage(const QByteArray& hexFile) { image = hexFile; }

    /// Sets the program to start instead of the uploader in the working folder.
    void setProgram(const QString& path) { program = path; }

    /// Abandons a run in progress.
    ~UploadProfiles() override;

    /// Starts the erase; programming follows.
    void start();

signals:
    /// Emitted when both runs have succeeded.
    void finished();

    /// Emitted when a run could not be started or failed; twice if the uploader crashes.
    void errorUploading();

    /// Emitted when another program, `holder`, has the port. Nothing was started.
    void portInUse(const QString& holder);

public slots:
    void eraseEEPROM();
    void eraseFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void flashEEPROM();
    void flashFinished(int exitCode, QProcess::ExitStatus exitStatus);

private:
    using EndHandler = void (UploadProfiles::*)(int, QProcess::ExitStatus);

    QProcess* run(const QStringList& operation, EndHandler onFinished);
    bool provideImage() const;
    void onError(QProcess::ProcessError error);
    void fail();
    void refuse(const QString& holder);

    QString port;
    QString program = Uploader::program();
    QString filePath;
    QByteArray image; ///< null: any content
    QPointer<PortTurn> turn;
    QPointer<QProcess> eraseProcess;
    QPointer<QProcess> flashProcess;
};
} // namespace UploadDownload
