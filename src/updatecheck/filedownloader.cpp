#include "updatecheck/filedownloader.h"

#include <QNetworkReply>
#include <QUrl>

namespace NewFirmwareChecker
{
namespace
{
constexpr int usualAnswer = 262144; // bytes reserved

/// Returns the address; an empty one, whose request fails, if it is not HTTP.
QUrl httpUrl(const QString& text)
{
    const QUrl url(text);
    const bool isHttp =
        url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return isHttp ? url : QUrl();
}
} // namespace

FileDownloader::FileDownloader(QObject* parent) : QObject(parent)
{
    request.setRawHeader("User-Agent", "Tovo-Tech-Kelvaron-Profile-Editor");
    request.setRawHeader("Accept-Encoding", "identity"); // also keeps Qt from unpacking
    buffer.reserve(usualAnswer);
}

FileDownloader::~FileDownloader()
{
    abortReply();
}

void FileDownloader::startDownloading(const QString& url, int mostBytes)
{
    reset();
    limit = mostBytes;
    request.setUrl(httpUrl(url));
    reply = manager.get(request);
    connect(reply, &QNetworkReply::readyRead, this, &FileDownloader::onReadyRead);
    connect(reply, &QNetworkReply::finished, this, &FileDownloader::onDoneReading);
    connect(reply, &QNetworkReply::errorOccurred, this, &FileDownloader::onError);
    connect(reply, &QNetworkReply::downloadProgress, this, &FileDownloader::onDownloadProgress);
}

void FileDownloader::reset()
{
    abortReply();
    failed = false;
    buffer.resize(0); // keeps the reserved memory
}

void FileDownloader::abortReply()
{
    if (reply == nullptr) {
        return;
    }
    reply->disconnect(this);
    reply->abort();
    reply->deleteLater();
    reply = nullptr;
}

void FileDownloader::onReadyRead()
{
    buffer.append(reply->readAll());
    if (buffer.size() > limit) {
        reply->abort(); // ends with error()
    }
}

void FileDownloader::onDoneReading()
{
    reply->deleteLater();
    reply = nullptr;
    if (failed) {
        emit error();
        return;
    }
    const QByteArray answer = buffer; // a receiver may start the next request
    emit finished(answer);
}

void FileDownloader::onError()
{
    failed = true;
}

void FileDownloader::onDownloadProgress(qint64 received, qint64)
{
    emit downloadProgress(received);
}
} // namespace NewFirmwareChecker
