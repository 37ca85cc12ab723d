#include "platform/memory/MemoryFileSearch.h"

#include <QFileInfo>
#include <QMetaObject>

#include <utility>

void MemoryFileSearch::findByName(const QString& text, int limit, QObject* context, Answer answer)
{
    queries.append(text);
    if (holdAnswers) {
        m_held.append(Query{text, limit, context, std::move(answer)});
        return;
    }
    QMetaObject::invokeMethod(
        context, [answer = std::move(answer), result = matches(text, limit)] { answer(result); },
        Qt::QueuedConnection);
}

bool MemoryFileSearch::answerHeld()
{
    const QList<Query> held = std::exchange(m_held, {});
    for (const Query& query : held) {
        if (query.context)
            query.answer(matches(query.text, query.limit));
    }
    return !held.isEmpty();
}

std::optional<QStringList> MemoryFileSearch::matches(const QString& text, int limit) const
{
    if (!available)
        return std::nullopt;
    QStringList found;
    for (const QString& path : files) {
        if (found.size() >= limit)
            break;
        if (QFileInfo(path).fileName().contains(text, Qt::CaseInsensitive))
            found.append(path);
    }
    return found;
}
