#pragma once

#include "updatecheck/filedownloader.h"

#include <QMap>
#include <QObject>
#include <QString>

namespace NewFirmwareChecker
{
/// Asks the maker's server for the newest bundle and fetches it into the working folder.
///
/// The server's version information is an XML document that is read flat: the name of every element
/// is a key, the text right after its start tag the value. "current_version" is the newest bundle's
/// version, "download_link" its address.
class NewFirmwareChecker : public QObject
{
    Q_OBJECT

public:
    // Far beyond every document that the maker's server has.
    static constexpr int largestDocument = 1024 * 1024; ///< bytes; a larger one is an error
    static constexpr int deepestElement = 64;           ///< reading ends at a deeper one
    static constexpr int mostElements = 10000;          ///< reading ends behind as many

    explicit NewFirmwareChecker(QObject* parent);

    /// Replaces the server of all checkers made from now on ("http://host:port"), for machines
    /// without the maker's server; an empty text brings that back.
    static void setServer(const QString& address);

    /// Fetches the version information; ends with firmwareInfoDownloaded() or error().
    void downloadFirmwareInfo();

    /// True when the version information names a dotted version. Nothing else is ever compared or
    /// made part of a file name.
    bool hasUsableVersion() const;

    /// True when the server's version is usable and greater than the one of the bundle in use.
    bool downloadNeeded() const;

    /// Fetches the bundle and saves it in the working folder as "v", its version and ".kelvaron",
    /// whole or not at all; ends with firmwareDownloaded() or error(). An answer that is not a bundle,
    /// does not match its checksums or could not be used by the next start is an error, and nothing
    /// is saved.
    void downloadLatestFirmware();

    /// Deletes this object: at once, or when its outstanding request has ended and a bundle that it
    /// fetched is saved.
    void deleteWhenDone();

public slots:
    void on_firmwareInfoDownloaded(const QByteArray& document);
    void on_firmwareInfoDownloadedError();
    void on_firmwareDownloaded(const QByteArray& bundle);
    void on_firmwareDownloadedError();

signals:
    /// The version information, whatever it holds; empty for an unreadable document.
    void firmwareInfoDownloaded(QMap<QString, QString> info);

    /// The bundle is in the working folder.
    void firmwareDownloaded();

    void error();

private:
    QString currentVersion() const;

    FileDownloader downloader;
    QMap<QString, QString> versionInfo;
    QString infoUrl;
};
} // namespace NewFirmwareChecker
