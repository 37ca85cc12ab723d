#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM and SIGINT into a normal quit of the event loop, so the shutdown sequence runs
// (other applications' tray icons come back, the hot key is released) when the session ends.
class TerminationSignals : public QObject
{
    Q_OBJECT
public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

private:
    void handleSignal();

    QSocketNotifier* m_notifier = nullptr;
};
