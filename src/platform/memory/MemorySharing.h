#pragma once

#include "platform/Sharing.h"

#include <QPointer>

// A share target that is reachable or not, and that can fail. Requests wait until the test
// finishes them, as a dialog on a phone would.
class MemorySharing final : public Sharing
{
public:
    void share(const QList<QUrl>& files, QObject* context, Answer answer) override;

    // Ends the oldest waiting request: shared when reachable and no failure is set, else the
    // failure or unavailable. False when none was waiting.
    bool finish();
    int waiting() const { return int(m_waiting.size()); }

    bool reachable = true;
    QString failure;
    // Every set of files that was sent.
    QList<QList<QUrl>> sent;

private:
    struct Request
    {
        QList<QUrl> files;
        QPointer<QObject> context;
        Answer answer;
    };
    QList<Request> m_waiting;
};
