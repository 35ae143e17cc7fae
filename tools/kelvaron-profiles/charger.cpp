#include "charger.h"

#include "base/buildconstants.h"
#include "commandoptions.h"
#include "console.h"
#include "editorfolder.h"
#include "transfer/downloadprofiles.h"
#include "transfer/uploadprofiles.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>

using UploadDownload::DownloadProfiles;
using UploadDownload::UploadProfiles;

namespace
{
/// Makes a folder the working folder while this object exists: the uploader finds its device
/// description there.
class WorkingFolder
{
public:
    explicit WorkingFolder(const QString& folder) : before(QDir::currentPath())
    {
        QDir::setCurrent(folder);
    }
    ~WorkingFolder() { QDir::setCurrent(before); }
    WorkingFolder(const WorkingFolder&) = delete;
    WorkingFolder& operator=(const WorkingFolder&) = delete;

private:
    QString before;
};
} // namespace

void Charger::addOptions(CommandOptions& options)
{
    options.addOption(
        QCommandLineOption(QStringLiteral("uploader"),
                           QStringLiteral("The uploader; by default %1 in the editor's folder.")
                               .arg(QString::fromLatin1(BuildConstants::uploaderFileName)),
                           QStringLiteral("FILE")));
}

void Charger::addPortOption(CommandOptions& options)
{
    options.addOption(QCommandLineOption(
        {QStringLiteral("p"), QStringLiteral("port")},
        QStringLiteral("The charger's serial port, named as in the editor, such as ttyUSB0."),
        QStringLiteral("PORT")));
    addOptions(options);
}

Charger::Charger(const QString& portName, const CommandOptions& options)
    : port(portName), folder(EditorFolder(options).path()),
      uploader(options.isSet(QStringLiteral("uploader"))
                   ? QDir().absoluteFilePath(options.value(QStringLiteral("uploader")))
                   : QDir(folder).absoluteFilePath(
                       QString::fromLatin1(BuildConstants::uploaderFileName)))
{}

QString Charger::name() const
{
    return prefix() + port;
}

bool Charger::read(const QString& hexFile) const
{
    QObject owner; // the parent of the worker and its processes
    return run(new DownloadProfiles(port, hexFile, &owner), &DownloadProfiles::errorDownloading,
               QStringLiteral("the charger's profiles could not be read"));
}

bool Charger::write(const QString& hexFile) const
{
    QObject owner;
    return run(
        new UploadProfiles(port, hexFile, &owner), &UploadProfiles::errorUploading,
        QStringLiteral("the profiles could not be written; the charger may hold none now, so "
                       "write them again"));
}

template <typename Worker>
bool Charger::run(Worker* worker, void (Worker::*failed)(), const QString& failure) const
{
    if (!isReady()) {
        return false;
    }
    const WorkingFolder workingFolder(folder);
    QEventLoop loop;
    bool hasEnded = false;
    bool isDone = false;
    QString problem = failure
                      + QStringLiteral(". Make sure that the port is the right one and that the "
                                       "Kelvaron is in bootloader mode.");
    const auto end = [&] {
        hasEnded = true;
        loop.quit();
    };
    QObject::connect(worker, failed, &loop, end);
    QObject::connect(worker, &Worker::finished, &loop, [&] {
        isDone = true;
        end();
    });
    QObject::connect(worker, &Worker::portInUse, &loop, [&](const QString& holder) {
        problem = QStringLiteral("in use by %1; nothing was done").arg(holder);
        end();
    });
    worker->setProgram(uploader);
    worker->start();
    if (!hasEnded) {
        loop.exec();
    }
    if (!isDone) {
        printError(port, problem);
    }
    return isDone;
}

bool Charger::isReady() const
{
    if (!QFileInfo(folder).isDir()) {
        printError(folder,
                   QStringLiteral("is not a folder; specify the editor's folder with --folder"));
        return false;
    }
    if (!QFileInfo(uploader).isFile() || !QFileInfo(uploader).isExecutable()) {
        printError(uploader,
                   QStringLiteral("is not a program; specify the uploader with --uploader"));
        return false;
    }
    return true;
}
