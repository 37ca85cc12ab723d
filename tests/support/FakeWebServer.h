#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPair>
#include <QTcpServer>
#include <QUrl>

#include <functional>

class QTcpSocket;

// A small HTTP/1.1 server on 127.0.0.1 that plays the weather and geocoding services: every
// request is recorded, and a handler per path decides the answer, which can also be a stalled
// connection that never answers.
class FakeWebServer : public QObject
{
    Q_OBJECT
public:
    struct Request
    {
        QByteArray method;
        QUrl url;                              // path and query
        QHash<QByteArray, QByteArray> headers; // names in lower case
    };
    struct Reply
    {
        int status = 200;
        QList<QPair<QByteArray, QByteArray>> headers;
        QByteArray body;
        // Accept the request and say nothing, until the client gives up.
        bool stall = false;
        // No Content-Length: the body ends when the connection closes.
        bool closeWithoutLength = false;

        Reply& with(const QByteArray& name, const QByteArray& value)
        {
            headers.append(qMakePair(name, value));
            return *this;
        }
    };
    using Handler = std::function<Reply(const Request&)>;

    explicit FakeWebServer(QObject* parent = nullptr);
    ~FakeWebServer() override;

    // "http://127.0.0.1:<port>"
    QUrl base() const;
    // The handler for every path that starts with `prefix`.
    void route(const QByteArray& prefix, Handler handler);
    const QList<Request>& requests() const { return m_requests; }
    int count(const QByteArray& prefix) const;

    static Reply json(const QByteArray& body, int status = 200);
    // A gzip member (RFC 1952) of `data`.
    static QByteArray gzip(const QByteArray& data);

private:
    void accept();
    void read(QTcpSocket* socket);

    QTcpServer m_server;
    QList<QPair<QByteArray, Handler>> m_routes;
    QList<Request> m_requests;
    QHash<QTcpSocket*, QByteArray> m_buffers;
};
