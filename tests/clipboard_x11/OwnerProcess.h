#pragma once

#include <QByteArray>
#include <QList>
#include <QProcess>
#include <QString>

// Drives an X11Owner child (this test binary with --serve-x11 <mode>). Every wait here blocks
// without running the event loop, so a test can hold the main thread while the owner works.
class OwnerProcess
{
public:
    explicit OwnerProcess(const QByteArray& mode);
    ~OwnerProcess();
    OwnerProcess(const OwnerProcess&) = delete;
    OwnerProcess& operator=(const OwnerProcess&) = delete;

    // Takes the clipboard; true once the X server has made the owner.
    bool take(const QString& text);
    // The same with a text of `bytes` ASCII bytes.
    bool fill(qsizetype bytes);
    // Waits until the owner was asked for `target`.
    bool waitForRequest(const QByteArray& target, int timeoutMs = 5000);
    // The targets asked for so far, in order.
    QList<QByteArray> requests();
    // The most requestor windows alive at once at any request so far.
    int mostAlive();
    // Ends the owner; the X server hands the clipboard to nobody.
    void quit();

private:
    bool waitForLine(const QByteArray& prefix, int timeoutMs);
    void readLines();

    QProcess m_process;
    QList<QByteArray> m_lines;
    qsizetype m_consumed = 0;
};
