#pragma once

#include "updatecheck/filedownloader.h"

#include <QMap>
#include <QObject>
#include <QString>

namespace NewFirmwareChecker
{
/// Asks the maker's server for the newest bundle and fetches it into the working folder.
///
/// The server's version information is an XML document whose structure is ignored: the name of
/// every element is a key, the text right after its start tag the value. "current_version" is the
/// newest bundle's version, "download_link" its address.
class NewFirmwareChecker : public QObject
{
    Q_OBJECT

public:
    // Limits far beyond any document of the maker's server.
    static constexpr int largestDocument = 1024 * 1024; ///< bytes; a larger document is an error
    static constexpr int deepestElement = 64;           ///< reading stops at a deeper element
    static constexpr int mostElements = 10000;          ///< reading stops after this many

    explicit NewFirmwareChecker(QObject* parent);

    /// Replaces the server ("http://host:port") for all checkers created afterwards, for machines
    /// that cannot reach the maker's server; an empty text restores it.
    static void setServer(const QString& address);

    /// Fetches the version information; ends with firmwareInfoDownloaded() or error().
    void downloadFirmwareInfo();

    /// Returns true if the version information contains a dotted version. Only such a version is
    /// compared or used in a file name.
    bool hasUsableVersion() const;

    /// Returns true if the server's version is usable and greater than that of the bundle in use.
    bool downloadNeeded() const;

    /// Fetches the bundle and saves it in the working folder as "v", its version and ".kelvaron",
    /// completely or not at all; ends with firmwareDownloaded() or error(). An answer that is not a
    /// bundle, does not match its checksums or could not be used by the next start is an error, and
    /// nothing is saved.
    void downloadLatestFirmware();

    /// Deletes this object: at once, or after the outstanding request has ended and a fetched
    /// bundle has been saved.
    void deleteWhenDone();

public slots:
    void on_firmwareInfoDownloaded(const QByteArray& document);
    void on_firmwareInfoDownloadedError();
    void on_firmwareDownloaded(const QByteArray& bundle);
    void on_firmwareDownloadedError();

signals:
    /// Emitted with the version information, unchecked; empty for an unreadable document.
    void firmwareInfoDownloaded(QMap<QString, QString> info);

    /// Emitted when the bundle is in the working folder.
    void firmwareDownloaded();

    void error();

private:
    QString currentVersion() const;

    FileDownloader downloader;
    QMap<QString, QString> versionInfo;
    QString infoUrl;
};
} // namespace NewFirmwareChecker
