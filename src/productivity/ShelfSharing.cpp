#include "productivity/ShelfSharing.h"

#include "common/StatusMessage.h"
#include "platform/Sharing.h"
#include "productivity/ShelfTexts.h"

ShelfSharing::ShelfSharing(Sharing& sharing, StatusMessage& message, QObject* parent)
    : QObject(parent), m_sharing(sharing), m_message(message)
{}

void ShelfSharing::airDrop(const QList<QUrl>& urls)
{
    if (m_session != 0) {
        m_message.setText(ShelfTexts::sharingOpen());
        return;
    }
    if (urls.isEmpty()) {
        m_message.setText(ShelfTexts::sharingEmpty());
        return;
    }
    const quint64 session = ++m_lastSession;
    m_session = session;
    Q_EMIT sessionStarted();
    m_sharing.share(urls, this, [this, session](SharingResult result) {
        if (result.outcome == SharingResult::unavailable)
            m_message.setText(ShelfTexts::sharingUnavailable());
        else if (result.outcome == SharingResult::failed)
            m_message.setText(ShelfTexts::sharingEnded(result.error));
        finish(session);
    });
}

void ShelfSharing::finish(quint64 session)
{
    // A service that answers twice releases the panel once.
    if (m_session != session)
        return;
    m_session = 0;
    Q_EMIT sessionEnded();
}
