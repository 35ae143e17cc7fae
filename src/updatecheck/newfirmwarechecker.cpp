#include "updatecheck/newfirmwarechecker.h"

#include "applicationglobalmap.h"
#include "buildconstants.h"
#include "textfile.h"
#include "versionstring.h"

#include <QBuffer>
#include <QXmlStreamReader>

namespace NewFirmwareChecker
{
namespace
{
const QString infoPath = QStringLiteral("/downloads/latest_bundle_info_new.xml");
const QString versionKey = QStringLiteral("current_version");
const QString linkKey = QStringLiteral("download_link");

QString& replacedServer()
{
    static QString server;
    return server;
}

QString server()
{
    return replacedServer().isEmpty() ? QString::fromLatin1(BuildConstants::downloadServer)
                                      : replacedServer();
}

QMap<QString, QString> readFlat(QByteArray document)
{
    // Read as a device, so that a large document is not held as text as a whole.
    QBuffer device(&document);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&device);
    QMap<QString, QString> values;
    while (!reader.atEnd()) {
        if (!reader.isStartElement()) {
            reader.readNext();
            continue;
        }
        const QString name = reader.name().toString();
        reader.readNext();
        if (!reader.hasError()) { // half a text is no value
            values[name] = reader.text().toString();
        }
    }
    return values;
}
} // namespace

NewFirmwareChecker::NewFirmwareChecker(QObject* parent)
    : QObject(parent), downloader(nullptr), infoUrl(server() + infoPath)
{}

void NewFirmwareChecker::setServer(const QString& address)
{
    replacedServer() = address;
}

void NewFirmwareChecker::downloadFirmwareInfo()
{
    downloader.disconnect();
    connect(&downloader, &FileDownloader::finished, this,
            &NewFirmwareChecker::on_firmwareInfoDownloaded);
    connect(&downloader, &FileDownloader::error, this,
            &NewFirmwareChecker::on_firmwareInfoDownloadedError);
    downloader.startDownloading(infoUrl);
}

void NewFirmwareChecker::on_firmwareInfoDownloaded(const QByteArray& document)
{
    versionInfo = readFlat(document);
    emit firmwareInfoDownloaded(versionInfo);
}

void NewFirmwareChecker::on_firmwareInfoDownloadedError()
{
    emit error();
}

QString NewFirmwareChecker::currentVersion() const
{
    return versionInfo.value(versionKey);
}

bool NewFirmwareChecker::hasUsableVersion() const
{
    return VersionString::isDottedVersion(currentVersion());
}

bool NewFirmwareChecker::downloadNeeded() const
{
    if (!hasUsableVersion()) {
        return false;
    }
    const QString inUse = ApplicationGlobalMap::getString(QStringLiteral("bundle_version"));
    const VersionString installed(VersionString::isDottedVersion(inUse) ? inUse
                                                                        : QStringLiteral("0"));
    return VersionString(currentVersion()).greaterThan(installed);
}

void NewFirmwareChecker::downloadLatestFirmware()
{
    downloader.disconnect();
    connect(&downloader, &FileDownloader::finished, this,
            &NewFirmwareChecker::on_firmwareDownloaded);
    connect(&downloader, &FileDownloader::error, this,
            &NewFirmwareChecker::on_firmwareDownloadedError);
    downloader.startDownloading(versionInfo.value(linkKey));
}

void NewFirmwareChecker::on_firmwareDownloaded(const QByteArray& bundle)
{
    // A version that is missing leaves the bare "v"; any other text could lead elsewhere.
    const bool isSafeName = currentVersion().isEmpty() || hasUsableVersion();
    const QString fileName = QLatin1Char('v') + currentVersion() + QStringLiteral(".kelvaron");
    const bool canBeRead = bundle.size() <= TextFile::largestFile;
    if (isSafeName && canBeRead && TextFile::writeBytes(fileName, bundle)) {
        emit firmwareDownloaded();
    } else {
        emit error();
    }
}

void NewFirmwareChecker::on_firmwareDownloadedError()
{
    emit error();
}

void NewFirmwareChecker::deleteWhenDone()
{
    if (!downloader.isBusy()) {
        deleteLater();
        return;
    }
    // After the slots above: these were connected first.
    connect(&downloader, &FileDownloader::finished, this, &QObject::deleteLater);
    connect(&downloader, &FileDownloader::error, this, &QObject::deleteLater);
}
} // namespace NewFirmwareChecker
