#include "platform/memory/MemorySharing.h"

void MemorySharing::share(const QList<QUrl>& files, QObject* context, Answer answer)
{
    m_waiting.append(Request{files, context, std::move(answer)});
}

bool MemorySharing::finish()
{
    if (m_waiting.isEmpty())
        return false;
    const Request request = m_waiting.takeFirst();
    SharingResult result;
    if (!reachable) {
        result.outcome = SharingResult::unavailable;
    } else if (!failure.isEmpty()) {
        result.outcome = SharingResult::failed;
        result.error = failure;
    } else {
        result.outcome = SharingResult::shared;
        sent.append(request.files);
    }
    if (request.context)
        request.answer(result);
    return true;
}
