#include "platform/memory/MemoryDialogs.h"

void MemoryDialogs::open(const OpenDialogRequest& request, QObject* context, Answer answer)
{
    shown.append(request);
    m_open.append(OpenDialog{request, context, std::move(answer)});
}

bool MemoryDialogs::choose(const QList<QUrl>& urls)
{
    return finish(urls);
}

bool MemoryDialogs::cancel()
{
    return finish(std::nullopt);
}

bool MemoryDialogs::finish(std::optional<QList<QUrl>> result)
{
    if (m_open.isEmpty())
        return false;
    // Taken off the list first: the answer may open the next dialog.
    const OpenDialog dialog = m_open.takeFirst();
    if (dialog.context)
        dialog.answer(std::move(result));
    return true;
}

void MemoryDialogs::save(const SaveDialogRequest& request, QObject* context, SaveAnswer answer)
{
    savesShown.append(request);
    m_saves.append(SaveDialog{request, context, std::move(answer)});
}

bool MemoryDialogs::saveTo(const QUrl& location)
{
    return finishSave(location);
}

bool MemoryDialogs::cancelSave()
{
    return finishSave(std::nullopt);
}

bool MemoryDialogs::finishSave(std::optional<QUrl> result)
{
    if (m_saves.isEmpty())
        return false;
    const SaveDialog dialog = m_saves.takeFirst();
    if (dialog.context)
        dialog.answer(std::move(result));
    return true;
}
