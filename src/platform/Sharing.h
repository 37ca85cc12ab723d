#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>

// What became of one request to send files to a nearby device.
struct SharingResult
{
    enum Outcome { shared, unavailable, failed };
    Outcome outcome = unavailable;
    // The service's own description of a failure.
    QString error;
};

// Sending files to a nearby device (a phone or another computer). Answers come later, on the
// main thread.
class Sharing
{
public:
    using Answer = std::function<void(SharingResult)>;

    virtual ~Sharing() = default;
    // Sends the files when a service with a reachable device can take them; `answer` runs once
    // unless `context` is gone by then.
    virtual void share(const QList<QUrl>& files, QObject* context, Answer answer) = 0;
};
