#include "focus/ActivityLog.h"

#include "common/Clock.h"
#include "settings/Defaults.h"

#include <cctype>

namespace {
const QString key = QString::fromLatin1(ActivityLog::storageKey);

// The stored list with `notice` in front. Only the new notice is encoded; the bytes of the
// others stay as they were, so a long list costs one copy instead of encoding every notice
// again, and the settings rewrite only the head of the stored value.
QByteArray withNewest(const QByteArray& list, const Notice& notice)
{
    const QByteArray single = Notice::encodeList({notice});
    const qsizetype open = list.indexOf('[');
    qsizetype next = open + 1;
    while (next < list.size() && std::isspace(static_cast<unsigned char>(list.at(next))))
        ++next;
    if (next >= list.size() || list.at(next) == ']')
        return single;
    // One copy of the list, not three.
    const QByteArrayView inner = QByteArrayView(single).sliced(1, single.size() - 2);
    QByteArray joined;
    joined.reserve(list.size() + inner.size() + 1);
    joined.append(QByteArrayView(list).first(open + 1))
        .append(inner)
        .append(',')
        .append(QByteArrayView(list).sliced(open + 1));
    return joined;
}
} // namespace

ActivityLog::ActivityLog(Defaults& defaults, Clock& clock, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_clock(clock)
{
    const auto data = defaults.dataValue(key);
    auto notices = data ? Notice::decodeList(*data) : std::nullopt;
    // What was read is what is stored: writing it back would change nothing. A list that cannot
    // be read starts empty, and its original is kept aside before the first notice replaces it.
    if (notices) {
        m_notices = std::move(*notices);
        m_stored = *data;
    } else if (defaults.contains(key)) {
        defaults.keepUnreadable(key, QStringLiteral("die Aktivitätsliste"));
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
    m_stored = m_stored.isEmpty() ? Notice::encodeList(m_notices) : withNewest(m_stored, m_notices.first());
    m_defaults.setData(key, m_stored);
}
