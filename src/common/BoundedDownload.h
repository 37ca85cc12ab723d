#pragma once

#include <QByteArray>
#include <QList>
#include <QNetworkReply>
#include <QObject>
#include <QPair>
#include <QPointer>

#include <functional>
#include <optional>

class QNetworkAccessManager;
class QNetworkRequest;

// What came back for one HTTP request: the status and headers when the server answered at all,
// the body, and why it failed otherwise.
struct HttpAnswer
{
    // The server sent a status line (also for 4xx and 5xx).
    bool hasResponse = false;
    int status = 0;
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    // The body grew past the limit and the transfer was stopped.
    bool oversized = false;
    QNetworkReply::NetworkError error = QNetworkReply::NoError;
    QString errorText;

    // The first header of that name (case-insensitive), if any.
    std::optional<QByteArray> header(QByteArrayView name) const;
};

// One GET whose body is refused once it passes `limit` bytes while it streams, so a huge or
// endless answer never fills memory. `done` runs once on the manager's thread unless the download
// is cancelled or destroyed first.
class BoundedDownload : public QObject
{
    Q_OBJECT
public:
    BoundedDownload(QNetworkAccessManager& manager, const QNetworkRequest& request, qint64 limit,
                    std::function<void(HttpAnswer)> done, QObject* parent = nullptr);
    ~BoundedDownload() override;

    // Stops the transfer; `done` is not called.
    void cancel();
    bool running() const { return m_reply != nullptr; }

private:
    void readChunk();
    void checkLength();
    void finish();
    void refuse();

    QPointer<QNetworkReply> m_reply;
    qint64 m_limit;
    QByteArray m_body;
    bool m_oversized = false;
    std::function<void(HttpAnswer)> m_done;
};
