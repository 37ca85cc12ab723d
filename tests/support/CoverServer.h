#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QHostAddress>
#include <QImage>
#include <QTcpServer>
#include <QTcpSocket>

// A tiny HTTP server on 127.0.0.1 that hands out covers and the ways covers go wrong:
//   /image/<anything>-png   a 64 × 64 PNG          /image/missing   404
//   /image/huge             claims and sends 50 MB  /image/loop      redirects to itself forever
//   /image/text             200 with text, not an image
class CoverServer : public QTcpServer
{
public:
    CoverServer()
    {
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection())
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(socket); });
        });
        listen(QHostAddress::LocalHost);
    }

    QString base() const { return QStringLiteral("http://127.0.0.1:%1/image/").arg(serverPort()); }
    int requests = 0;

    static QByteArray png(QColor colour = Qt::red)
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(colour);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        return bytes;
    }

private:
    void answer(QTcpSocket* socket)
    {
        const QByteArray request = socket->readAll();
        if (!request.contains("\r\n\r\n"))
            return;
        ++requests;
        const QByteArray path = request.split(' ').value(1);
        if (path.endsWith("-png")) {
            reply(socket, "200 OK", png(), "image/png");
        } else if (path.endsWith("/loop")) {
            socket->write("HTTP/1.1 302 Found\r\nLocation: " + path + "\r\nContent-Length: 0\r\n\r\n");
        } else if (path.endsWith("/huge")) {
            socket->write("HTTP/1.1 200 OK\r\nContent-Type: image/png\r\nContent-Length: 52428800\r\n\r\n");
            // Sent as the client reads, a megabyte at a time; the client should give up long before.
            auto* sent = new int(0);
            const auto more = [socket, sent] {
                if (socket->bytesToWrite() > (1 << 20))
                    return;
                if (++*sent > 50) {
                    socket->disconnectFromHost();
                    return;
                }
                socket->write(QByteArray(1 << 20, 'x'));
            };
            connect(socket, &QTcpSocket::bytesWritten, socket, more);
            connect(socket, &QObject::destroyed, socket, [sent] { delete sent; });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            more();
        } else if (path.endsWith("/text")) {
            reply(socket, "200 OK", "kein Bild", "text/plain");
        } else {
            reply(socket, "404 Not Found", "fehlt", "text/plain");
        }
    }

    static void reply(QTcpSocket* socket, const char* status, const QByteArray& body, const char* type)
    {
        socket->write(QByteArray("HTTP/1.1 ") + status + "\r\nContent-Type: " + type +
                      "\r\nContent-Length: " + QByteArray::number(body.size()) +
                      "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }
};
