#include "focus/ActivityLog.h"

#include "common/Clock.h"
#include "settings/Defaults.h"

namespace {
const QString key = QString::fromLatin1(ActivityLog::storageKey);
} // namespace

ActivityLog::ActivityLog(Defaults& defaults, Clock& clock, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_clock(clock)
{
    const auto data = defaults.dataValue(key);
    if (!data)
        return;
    if (auto notices = Notice::decodeList(*data)) {
        m_notices = std::move(*notices);
        store();
    }
}

void ActivityLog::addNotice(const QString& title, const QString& detail)
{
    Q_EMIT noticeAboutToBeAdded();
    m_notices.prepend(Notice{QUuid::createUuid(), title, detail, m_clock.now()});
    store();
    Q_EMIT noticeAdded();
    Q_EMIT noticesChanged();
}

void ActivityLog::greetIfEmpty()
{
    if (m_notices.isEmpty())
        addNotice(QStringLiteral("Willkommen bei Brenlow"),
                  QStringLiteral("Dein Platz für Fokus, Dateien und schnelle Aktionen."));
}

void ActivityLog::store()
{
    m_defaults.setData(key, Notice::encodeList(m_notices));
}
