#include "support/gui/httpserver.h"

#include "support/printing.h"

#include <QTcpSocket>
#include <QTimer>

HttpServer::HttpServer()
{
    connect(&server, &QTcpServer::newConnection, this, &HttpServer::accept);
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
}

HttpServer::~HttpServer()
{
    stop();
}

QString HttpServer::address() const
{
    return "http://127.0.0.1:" + QString::number(server.serverPort());
}

void HttpServer::release()
{
    const QList<HeldAnswer> waiting = held;
    held.clear();
    for (const HeldAnswer& entry : waiting) {
        if (entry.client != nullptr) {
            reply(entry.client, entry.answer);
        }
    }
}

void HttpServer::stop()
{
    server.close();
    const QList<QTcpSocket*> clients = pending.keys();
    for (QTcpSocket* client : clients) {
        client->abort();
    }
}

QStringList HttpServer::paths() const
{
    QStringList paths;
    for (const Request& request : received) {
        paths.append(request.path);
    }
    return paths;
}

int HttpServer::connections() const
{
    return pending.size();
}

void HttpServer::accept()
{
    while (QTcpSocket* client = server.nextPendingConnection()) {
        pending.insert(client, {});
        connect(client, &QTcpSocket::readyRead, this, [this, client] { read(client); });
        connect(client, &QTcpSocket::disconnected, this, [this, client] {
            pending.remove(client);
            client->deleteLater();
        });
    }
}

void HttpServer::read(QTcpSocket* client)
{
    QByteArray& text = pending[client];
    text += client->readAll();
    const int end = text.indexOf("\r\n\r\n");
    if (end < 0) {
        return;
    }
    const QList<QByteArray> lines = text.left(end).split('\n');
    text.clear();
    const QList<QByteArray> words = lines.first().trimmed().split(' ');
    Request request;
    request.method = QString::fromLatin1(words.value(0));
    request.path = QString::fromLatin1(words.value(1));
    for (const QByteArray& line : lines.mid(1)) {
        const int colon = line.indexOf(':');
        request.headers[line.left(colon).trimmed().toLower()] = line.mid(colon + 1).trimmed();
    }
    received.append(request);

    const Answer answer = answers.value(request.path, {404, "no such file"});
    if (answer.pace == Pace::HELD) {
        held.append({client, answer});
    } else {
        reply(client, answer);
    }
}

void HttpServer::reply(QTcpSocket* client, const Answer& answer)
{
    const bool endless = answer.pace == Pace::ENDLESS || answer.pace == Pace::ENDLESS_FLOOD;
    client->write("HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\n");
    if (!answer.header.isEmpty()) {
        client->write(answer.header + "\r\n");
    }
    if (answer.tellsLength && !endless) {
        client->write("Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n");
    }
    client->write("Connection: close\r\n\r\n");
    if (answer.pace == Pace::ENDLESS) {
        sendEndlessly(client, 5, " ");
    } else if (answer.pace == Pace::ENDLESS_FLOOD) {
        sendEndlessly(client, 0, QByteArray(1 << 20, ' '));
    } else {
        client->write(answer.dropAfter < 0 ? answer.body : answer.body.left(answer.dropAfter));
        client->disconnectFromHost(); // after all is sent
    }
}

void HttpServer::sendEndlessly(QTcpSocket* client, int interval, const QByteArray& piece)
{
    auto* timer = new QTimer(client);
    connect(timer, &QTimer::timeout, client, [client, piece] {
        if (client->bytesToWrite() < piece.size()) {
            client->write(piece);
        }
    });
    timer->start(interval);
}
