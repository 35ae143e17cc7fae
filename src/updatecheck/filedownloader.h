#pragma once

#include <QByteArray>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QObject>
#include <QString>

class QNetworkReply;

namespace NewFirmwareChecker
{
/// Fetches one file at a time over HTTP into memory.
///
/// Every request that is not aborted ends with exactly one signal: finished() or error(). There is
/// no timeout, and redirects are not followed: an answer that Qt does not report as an error counts
/// as success. Answers are requested and accepted only without compression: a compressed one may
/// expand to a thousand times its size.
class FileDownloader : public QObject
{
    Q_OBJECT

public:
    /// The largest answer in bytes by default: the size of the largest bundle that is read.
    static constexpr int largestAnswer = 16 * 1024 * 1024;

    explicit FileDownloader(QObject* parent);
    ~FileDownloader() override;

    /// Starts the request and abandons an outstanding one. Addresses that are not HTTP (local
    /// files, for instance) and empty ones end with error(). So does an answer of more than
    /// `mostBytes` bytes: a server that never stops sending must not exhaust the memory.
    void startDownloading(const QString& url, int mostBytes = largestAnswer);

    /// Aborts an outstanding request, which then ends without a signal, and discards its answer.
    void reset();

    /// Returns true while a request is outstanding.
    bool isBusy() const { return reply != nullptr; }

signals:
    void finished(QByteArray answer);
    void error();

    /// Emitted with the number of bytes received so far.
    void downloadProgress(qint64 received);

public slots:
    // Handle the outstanding request.
    void onReadyRead();
    void onDoneReading();
    void onError();
    void onDownloadProgress(qint64 received, qint64 total);

private:
    void abortReply();

    QNetworkRequest request;
    QNetworkAccessManager manager;
    QNetworkReply* reply = nullptr; ///< a child of the manager
    bool failed = false;
    QByteArray buffer;
    int limit = 0; ///< bytes of the answer
};
} // namespace NewFirmwareChecker
