#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTcpServer>

class QTcpSocket;

/// A real HTTP server on this machine. It answers from the test program's event loop.
///
///     HttpServer server;
///     server.answer("/info.xml", {200, "<info/>"});
///     fetch(server.address() + "/info.xml");
///
/// A path without an answer gives 404. Connections are closed after each answer.
class HttpServer : public QObject
{
public:
    enum class Pace
    {
        AT_ONCE,
        HELD,         ///< nothing is sent before release()
        ENDLESS,      ///< a byte every few milliseconds until the client disconnects
        ENDLESS_FLOOD ///< as much as the client accepts until it disconnects
    };

    struct Answer
    {
        int status = 200;
        QByteArray body;
        Pace pace = Pace::AT_ONCE;
        int dropAfter = -1;      ///< bytes of the body after which the connection is dropped
        QByteArray header = {};  ///< one more header line, without its line end
        bool tellsLength = true; ///< without it the end of the connection is the end of the body
    };

    /// A request as received.
    struct Request
    {
        QString method;
        QString path;
        QMap<QByteArray, QByteArray> headers; ///< names in lower case
    };

    HttpServer();
    ~HttpServer() override;

    /// "http://127.0.0.1:port".
    QString address() const;

    /// Sets the answer to requests for this path.
    void answer(const QString& path, const Answer& answer) { answers[path] = answer; }

    /// Sends all answers that are held.
    void release();

    /// No more connections are accepted; the open ones are dropped.
    void stop();

    QList<Request> requests() const { return received; }

    /// The paths of the requests in their order.
    QStringList paths() const;

    /// How many clients are connected.
    int connections() const;

private:
    void accept();
    void read(QTcpSocket* client);
    void reply(QTcpSocket* client, const Answer& answer);
    static void sendEndlessly(QTcpSocket* client, int interval, const QByteArray& piece);

    struct HeldAnswer
    {
        QPointer<QTcpSocket> client;
        Answer answer;
    };

    QTcpServer server;
    QMap<QString, Answer> answers;
    QList<Request> received;
    QList<HeldAnswer> held;
    QMap<QTcpSocket*, QByteArray> pending; ///< the clients and the received parts of their requests
};

using Pace = HttpServer::Pace;
