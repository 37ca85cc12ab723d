#include "FakeWebServer.h"

#include <QTcpSocket>

#include <array>

namespace {

quint32 crc32(const QByteArray& data)
{
    static const auto table = [] {
        std::array<quint32, 256> t{};
        for (quint32 i = 0; i < 256; ++i) {
            quint32 c = i;
            for (int k = 0; k < 8; ++k)
                c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
            t[i] = c;
        }
        return t;
    }();
    quint32 crc = 0xFFFFFFFFu;
    for (char byte : data)
        crc = table[(crc ^ quint8(byte)) & 0xFF] ^ (crc >> 8);
    return crc ^ 0xFFFFFFFFu;
}

void appendLittle(QByteArray& out, quint32 value)
{
    for (int i = 0; i < 4; ++i)
        out.append(char((value >> (8 * i)) & 0xFF));
}

QByteArray reason(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 203:
        return "Non-Authoritative Information";
    case 304:
        return "Not Modified";
    case 404:
        return "Not Found";
    case 429:
        return "Too Many Requests";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "Status";
    }
}

} // namespace

FakeWebServer::FakeWebServer(QObject* parent) : QObject(parent)
{
    m_server.listen(QHostAddress::LocalHost);
    connect(&m_server, &QTcpServer::newConnection, this, &FakeWebServer::accept);
}

FakeWebServer::~FakeWebServer()
{
    // The sockets go with the server, after the buffers: they must not report back.
    for (QTcpSocket* socket : m_server.findChildren<QTcpSocket*>())
        socket->disconnect(this);
}

QUrl FakeWebServer::base() const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(m_server.serverPort()));
}

void FakeWebServer::route(const QByteArray& prefix, Handler handler)
{
    m_routes.prepend({prefix, std::move(handler)});
}

int FakeWebServer::count(const QByteArray& prefix) const
{
    int n = 0;
    for (const Request& request : m_requests)
        n += request.url.path().toUtf8().startsWith(prefix) ? 1 : 0;
    return n;
}

FakeWebServer::Reply FakeWebServer::json(const QByteArray& body, int status)
{
    return Reply{status, {{"Content-Type", "application/json"}}, body, false};
}

QByteArray FakeWebServer::gzip(const QByteArray& data)
{
    // qCompress: 4-byte length, 2-byte zlib header, raw deflate, 4-byte Adler-32.
    const QByteArray zlib = qCompress(data, 9);
    QByteArray out("\x1f\x8b\x08\x00\x00\x00\x00\x00\x00\x03", 10);
    out += zlib.mid(6, zlib.size() - 10);
    appendLittle(out, crc32(data));
    appendLittle(out, quint32(data.size()));
    return out;
}

void FakeWebServer::accept()
{
    while (QTcpSocket* socket = m_server.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_buffers.remove(socket);
            socket->deleteLater();
        });
    }
}

void FakeWebServer::read(QTcpSocket* socket)
{
    QByteArray& buffer = m_buffers[socket];
    buffer += socket->readAll();
    for (;;) {
        const qsizetype end = buffer.indexOf("\r\n\r\n");
        if (end < 0)
            return;
        const QList<QByteArray> lines = buffer.left(end).split('\n');
        buffer.remove(0, end + 4);
        const QList<QByteArray> first = lines.value(0).trimmed().split(' ');
        Request request;
        request.method = first.value(0);
        request.url = QUrl::fromEncoded(first.value(1));
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines[i].indexOf(':');
            if (colon > 0)
                request.headers.insert(lines[i].left(colon).trimmed().toLower(),
                                       lines[i].mid(colon + 1).trimmed());
        }
        m_requests.append(request);

        Reply reply = json("{}", 404);
        const QByteArray path = request.url.path().toUtf8();
        for (const auto& [prefix, handler] : m_routes) {
            if (path.startsWith(prefix)) {
                reply = handler(request);
                break;
            }
        }
        if (reply.stall)
            return;
        QByteArray out = "HTTP/1.1 " + QByteArray::number(reply.status) + ' ' + reason(reply.status) + "\r\n";
        for (const auto& [name, value] : reply.headers)
            out += name + ": " + value + "\r\n";
        if (reply.status != 304 && !reply.closeWithoutLength)
            out += "Content-Length: " + QByteArray::number(reply.body.size()) + "\r\n";
        if (reply.closeWithoutLength)
            out += "Connection: close\r\n";
        out += "\r\n";
        if (reply.status != 304)
            out += reply.body;
        socket->write(out);
        if (reply.closeWithoutLength) {
            socket->disconnectFromHost();
            return;
        }
    }
}
