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
/// erased, then the image is programmed into it. Both run in one turn on the port, which may have to be
/// waited for.
///
/// The processes become children of the worker's own parent.
class UploadProfiles : public QObject
{
    Q_OBJECT

public:
    /// `hexFilePath` is the Intel HEX file that the uploader programs.
    UploadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// What the file has to hold. It is written again before each run when it holds anything else:
    /// another editor in the same folder uses the same file. Without this it is taken as it is.
    void setImage(const QByteArray& hexFile) { image = hexFile; }

    /// What to start in place of the uploader in the working folder.
    void setProgram(const QString& path) { program = path; }

    /// A run that still goes on is given up.
    ~UploadProfiles() override;

    /// Starts the erase; everything else follows from it.
    void start();

signals:
    /// Both runs have succeeded.
    void finished();

    /// A run could not be started or failed. Emitted twice when the uploader crashes.
    void errorUploading();

    /// Another program has the port, `holder` says which, for the user. Nothing was started.
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
    QByteArray image; ///< null: not known
    QPointer<PortTurn> turn;
    QPointer<QProcess> eraseProcess;
    QPointer<QProcess> flashProcess;
};
} // namespace UploadDownload
