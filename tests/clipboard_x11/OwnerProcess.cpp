#include "OwnerProcess.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

OwnerProcess::OwnerProcess(const QByteArray& mode)
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--serve-x11"), QString::fromLatin1(mode)});
    m_process.waitForStarted();
}

OwnerProcess::~OwnerProcess()
{
    quit();
}

void OwnerProcess::quit()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(3000))
        m_process.kill();
    m_process.waitForFinished();
}

bool OwnerProcess::take(const QString& text)
{
    m_process.write("take " + text.toUtf8() + '\n');
    return waitForLine("taken", 5000);
}

bool OwnerProcess::fill(qsizetype bytes)
{
    m_process.write("fill " + QByteArray::number(bytes) + '\n');
    return waitForLine("taken", 5000);
}

bool OwnerProcess::waitForRequest(const QByteArray& target, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    for (;;) {
        readLines();
        if (requests().contains(target))
            return true;
        if (deadline.hasExpired() || !m_process.waitForReadyRead(int(deadline.remainingTime())))
            return false;
    }
}

QList<QByteArray> OwnerProcess::requests()
{
    readLines();
    QList<QByteArray> targets;
    for (const QByteArray& line : std::as_const(m_lines)) {
        if (line.startsWith("asked: "))
            targets.append(line.mid(7).split(' ').value(0));
    }
    return targets;
}

int OwnerProcess::mostAlive()
{
    readLines();
    int most = 0;
    for (const QByteArray& line : std::as_const(m_lines)) {
        const qsizetype at = line.indexOf(" alive: ");
        if (line.startsWith("asked: ") && at > 0)
            most = std::max(most, line.mid(at + 8).toInt());
    }
    return most;
}

bool OwnerProcess::waitForLine(const QByteArray& prefix, int timeoutMs)
{
    QDeadlineTimer deadline(timeoutMs);
    for (;;) {
        readLines();
        for (; m_consumed < m_lines.size(); ++m_consumed) {
            if (m_lines.at(m_consumed).startsWith(prefix)) {
                ++m_consumed;
                return true;
            }
        }
        if (deadline.hasExpired() || !m_process.waitForReadyRead(int(deadline.remainingTime())))
            return false;
    }
}

void OwnerProcess::readLines()
{
    while (m_process.canReadLine())
        m_lines.append(m_process.readLine().trimmed());
}
