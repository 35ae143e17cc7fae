#pragma once

#include <QObject>
#include <QPointer>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace UploadDownload
{
/// Writes a profile image to the charger in two runs of the uploader: first the profile area is
/// erased, then the image is programmed into it.
///
/// The processes become children of the worker's own parent.
class UploadProfiles : public QObject
{
    Q_OBJECT

public:
    /// `hexFilePath` is a whole Intel HEX file.
    UploadProfiles(const QString& portName, const QString& hexFilePath, QObject* parent);

    /// A run that still goes on is given up.
    ~UploadProfiles() override;

    /// Starts the erase; everything else follows from it.
    void start();

signals:
    /// Both runs have succeeded.
    void finished();

    /// A run could not be started or failed. Emitted twice when the uploader crashes.
    void errorUploading();

public slots:
    void eraseEEPROM();
    void eraseFinished(int exitCode, QProcess::ExitStatus exitStatus);
    void flashEEPROM();
    void flashFinished(int exitCode, QProcess::ExitStatus exitStatus);

private:
    using EndHandler = void (UploadProfiles::*)(int, QProcess::ExitStatus);

    QProcess* run(const QStringList& operation, EndHandler onFinished);

    QString port;
    QString filePath;
    QPointer<QProcess> eraseProcess;
    QPointer<QProcess> flashProcess;
};
} // namespace UploadDownload
