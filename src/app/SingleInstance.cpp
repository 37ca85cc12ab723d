#include "app/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDateTime>

namespace {

QString process(qint64 pid)
{
    return pid > 0 ? QStringLiteral(" (Prozess %1)").arg(pid) : QString();
}

QString unreachableText(qint64 pid)
{
    return QStringLiteral("Brenlow läuft bereits%1, ist aber nicht über den Sitzungsbus erreichbar; sein "
                          "Panel lässt sich von hier aus nicht öffnen. Dieser Start wird beendet.")
        .arg(process(pid));
}

QString noAnswerText(qint64 pid)
{
    return QStringLiteral("Brenlow läuft bereits%1, hat aber nicht innerhalb von %2 Sekunden geantwortet. "
                          "Das Panel wurde nicht geöffnet; reagiert der Prozess nicht mehr, beende ihn und "
                          "starte Brenlow neu.")
        .arg(process(pid))
        .arg(SingleInstance::answerTimeoutMs / 1000);
}

QString rejectedText(qint64 pid, const QString& reason)
{
    return QStringLiteral("Brenlow läuft bereits%1, hat das Öffnen des Panels aber abgelehnt: %2")
        .arg(process(pid), reason);
}

QString lockUnavailableText(const QString& path, const QString& reason)
{
    return QStringLiteral("Hinweis: Die Sperrdatei %1 lässt sich nicht anlegen (%2). Ein zweiter Start von "
                          "Brenlow wird deshalb nicht erkannt.")
        .arg(path, reason);
}

} // namespace

SingleInstance::SingleInstance(QString lockPath, QObject* parent)
    : QObject(parent), m_lock(std::move(lockPath))
{}

SingleInstance::Claim SingleInstance::claim()
{
    m_report.clear();
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return claimWithLock();
    const QString service = QString::fromLatin1(serviceName);
    const QString path = QString::fromLatin1(objectPath);
    // Twice at most: the first instance may end between our request for its name and our call.
    for (int attempt = 0; attempt < 2; ++attempt) {
        bus.registerObject(path, this, QDBusConnection::ExportScriptableSlots);
        if (bus.registerService(service)) {
            // An instance started without a bus holds only the lock.
            const Claim claim = claimWithLock();
            if (claim != Claim::first) {
                bus.unregisterService(service);
                bus.unregisterObject(path);
            }
            return claim;
        }
        bus.unregisterObject(path);
        bool retry = false;
        const Claim claim = askRunningInstance(retry);
        if (!retry)
            return claim;
    }
    m_report = unreachableText(0);
    return Claim::refused;
}

SingleInstance::Claim SingleInstance::claimWithLock()
{
    switch (m_lock.acquire()) {
    case InstanceLock::State::held:
        return Claim::first;
    case InstanceLock::State::heldByOther:
        m_report = unreachableText(m_lock.holderPid());
        return Claim::refused;
    case InstanceLock::State::unavailable:
        // Better a start that cannot guard itself than no start at all.
        m_report = lockUnavailableText(m_lock.path(), m_lock.error());
        return Claim::first;
    }
    return Claim::first;
}

SingleInstance::Claim SingleInstance::askRunningInstance(bool& retry)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    const QString service = QString::fromLatin1(serviceName);
    // The bus itself answers this, even for an owner that is stopped.
    const QDBusReply<uint> owner = bus.interface()->servicePid(service);
    const qint64 pid = owner.isValid() ? qint64(owner.value()) : 0;

    // Nothing else happens in this process until the answer is in: blocking is what it should do.
    // With the end of our wait: a first instance that wakes up later must not open its panel
    // after we told the user it would not.
    QDBusMessage call = QDBusMessage::createMethodCall(service, QString::fromLatin1(objectPath), service,
                                                       QStringLiteral("ReopenBefore"));
    call << qlonglong(QDateTime::currentMSecsSinceEpoch() + answerTimeoutMs);
    // The call outlasts the deadline: whatever the first instance decides before it reaches us in
    // time, and a timer that fires a little early cannot cut off an answer it still accepts.
    const QDBusMessage reply = bus.call(call, QDBus::Block, answerTimeoutMs + answerGraceMs);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        if (reply.arguments().value(0).toBool())
            return Claim::handedOver;
        m_report = noAnswerText(pid);
        return Claim::noAnswer;
    }
    switch (QDBusError(reply).type()) {
    case QDBusError::ServiceUnknown:
        retry = true;
        return Claim::refused;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        m_report = noAnswerText(pid);
        return Claim::noAnswer;
    default:
        m_report = rejectedText(pid, reply.errorMessage());
        return Claim::refused;
    }
}

bool SingleInstance::ReopenBefore(qlonglong deadlineMs)
{
    if (QDateTime::currentMSecsSinceEpoch() > deadlineMs)
        return false;
    Reopen();
    return true;
}

void SingleInstance::Reopen()
{
    if (onReopen)
        onReopen();
}
