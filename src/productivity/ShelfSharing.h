#pragma once

#include <QList>
#include <QObject>
#include <QUrl>

class Sharing;
class StatusMessage;

// Sends the shelf's files to a nearby device: one sharing session at a time, which asks for the
// panel to stay open from its start until the service has answered.
class ShelfSharing : public QObject
{
    Q_OBJECT
public:
    ShelfSharing(Sharing& sharing, StatusMessage& message, QObject* parent = nullptr);

    void airDrop(const QList<QUrl>& urls);
    bool sessionOpen() const { return m_session != 0; }

Q_SIGNALS:
    // A session began or ended: the panel holds one interaction lock in between.
    void sessionStarted();
    void sessionEnded();

private:
    void finish(quint64 session);

    Sharing& m_sharing;
    StatusMessage& m_message;
    // The running session's number; 0 while none runs.
    quint64 m_session = 0;
    quint64 m_lastSession = 0;
};
