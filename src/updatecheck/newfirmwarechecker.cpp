#include "updatecheck/newfirmwarechecker.h"

#include "KelvaronBundle/bundlecheck.h"
#include "KelvaronBundle/kelvaronbundle.h"
#include "applicationglobalmap.h"
#include "base/buildconstants.h"
#include "base/textfile.h"
#include "versionstring.h"

#include <QBuffer>
#include <QTemporaryFile>
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
    // Read from a device, so that a large document is not converted to text as a whole.
    QBuffer device(&document);
    device.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&device);
    QMap<QString, QString> values;
    int depth = 0;
    int elements = 0;
    while (!reader.atEnd()) {
        if (!reader.isStartElement()) {
            depth -= reader.isEndElement() ? 1 : 0;
            reader.readNext();
            continue;
        }
        ++depth;
        ++elements;
        if (depth > NewFirmwareChecker::deepestElement
            || elements > NewFirmwareChecker::mostElements) {
            break; // as if the document ended here
        }
        const QString name = reader.name().toString();
        reader.readNext();
        if (!reader.hasError()) { // an incomplete text is not a value
            values[name] = reader.text().toString();
        }
    }
    return values;
}
/// Returns true for a complete bundle with correct checksums that the next start can use.
bool isSoundBundle(const QString& path)
{
    if (!BundleCheck::isSafe(path)) {
        return false;
    }
    KelvaronBundle bundle(path);
    bundle.parseKeyValuePairs();
    return bundle.parseBundle() && BundleCheck::isUsable(bundle);
}

bool isSoundBundle(const QByteArray& bytes)
{
    QTemporaryFile file; // outside of the working folder, where every bundle is installed
    return file.open() && file.write(bytes) == bytes.size() && file.flush()
           && isSoundBundle(file.fileName());
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
    downloader.startDownloading(infoUrl, largestDocument);
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
    const QString inUse = ApplicationGlobalMap::getString(ApplicationGlobalMap::bundleVersion);
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
    // A missing version leaves the bare "v"; any other text could be a path to another folder.
    const bool isSafeName = currentVersion().isEmpty() || hasUsableVersion();
    const QString fileName = QLatin1Char('v') + currentVersion() + QStringLiteral(".kelvaron");
    if (isSafeName && isSoundBundle(bundle) && TextFile::writeBytes(fileName, bundle)) {
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
    // Called after the slots above, which were connected first.
    connect(&downloader, &FileDownloader::finished, this, &QObject::deleteLater);
    connect(&downloader, &FileDownloader::error, this, &QObject::deleteLater);
}
} // namespace NewFirmwareChecker
