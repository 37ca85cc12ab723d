#include "common/BoundedDownload.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

std::optional<QByteArray> HttpAnswer::header(QByteArrayView name) const
{
    for (const auto& [key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return std::nullopt;
}

BoundedDownload::BoundedDownload(QNetworkAccessManager& manager, const QNetworkRequest& request, qint64 limit,
                                 std::function<void(HttpAnswer)> done, QObject* parent)
    : QObject(parent), m_reply(manager.get(request)), m_limit(limit), m_done(std::move(done))
{
    // Qt's own buffer would otherwise hold the whole answer before we see it.
    m_reply->setReadBufferSize(64 * 1024);
    connect(m_reply, &QNetworkReply::metaDataChanged, this, &BoundedDownload::checkLength);
    connect(m_reply, &QNetworkReply::readyRead, this, &BoundedDownload::readChunk);
    connect(m_reply, &QNetworkReply::finished, this, &BoundedDownload::finish);
}

BoundedDownload::~BoundedDownload()
{
    cancel();
}

void BoundedDownload::cancel()
{
    m_done = nullptr;
    if (QNetworkReply* reply = m_reply) {
        m_reply = nullptr;
        reply->disconnect(this);
        reply->abort();
        reply->deleteLater();
    }
}

void BoundedDownload::checkLength()
{
    // A declared length past the limit is refused before a byte of it is read.
    bool ok = false;
    const qint64 declared = m_reply->header(QNetworkRequest::ContentLengthHeader).toLongLong(&ok);
    if (ok && declared > m_limit && m_reply->rawHeader("Content-Encoding").isEmpty())
        refuse();
}

void BoundedDownload::readChunk()
{
    if (!m_reply)
        return;
    m_body += m_reply->readAll();
    if (m_body.size() > m_limit)
        refuse();
}

void BoundedDownload::refuse()
{
    m_oversized = true;
    m_body.clear();
    // abort() delivers finished() at once, which reports the refusal.
    m_reply->abort();
}

void BoundedDownload::finish()
{
    QNetworkReply* reply = m_reply;
    if (!reply)
        return;
    m_reply = nullptr;
    reply->deleteLater();
    if (!m_oversized && reply->isOpen())
        m_body += reply->readAll();
    if (m_body.size() > m_limit) {
        m_oversized = true;
        m_body.clear();
    }

    HttpAnswer answer;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    answer.hasResponse = status.isValid();
    answer.status = status.toInt();
    for (const auto& pair : reply->rawHeaderPairs())
        answer.headers.append(pair);
    answer.oversized = m_oversized;
    answer.body = std::move(m_body);
    answer.error = reply->error();
    answer.errorText = reply->errorString();
    if (auto done = std::exchange(m_done, nullptr))
        done(std::move(answer));
}
