#pragma once

#include "common/Scheduler.h"

#include <QObject>
#include <QString>

// The panel's transient status line: every area reports here in German. A text stays for six
// seconds after its last change; a newer text restarts the six seconds, "" clears at once.
class StatusMessage : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
public:
    static constexpr double lifetime = 6.0;

    explicit StatusMessage(Scheduler& scheduler, QObject* parent = nullptr);

    const QString& text() const { return m_text; }
    void setText(const QString& text);

Q_SIGNALS:
    void textChanged();

private:
    QString m_text;
    ScheduledWork m_dismiss;
};
