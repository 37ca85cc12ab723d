#pragma once

#include "platform/Dialogs.h"

#include <QPointer>

// Dialogs that stay open until the test answers them, oldest first, as a user would.
class MemoryDialogs final : public Dialogs
{
public:
    void open(const OpenDialogRequest& request, QObject* context, Answer answer) override;
    void save(const SaveDialogRequest& request, QObject* context, SaveAnswer answer) override;

    // Save dialogs, answered separately from the open ones, oldest first.
    int saveCount() const { return int(m_saves.size()); }
    const SaveDialogRequest& currentSave() const { return m_saves.first().request; }
    bool saveTo(const QUrl& location);
    bool cancelSave();
    QList<SaveDialogRequest> savesShown;

    int openCount() const { return int(m_open.size()); }
    // The request of the oldest open dialog; only while one is open.
    const OpenDialogRequest& current() const { return m_open.first().request; }
    // The user confirms these items; false when no dialog was open.
    bool choose(const QList<QUrl>& urls);
    bool cancel();

    // Every request shown so far.
    QList<OpenDialogRequest> shown;

private:
    struct OpenDialog
    {
        OpenDialogRequest request;
        QPointer<QObject> context;
        Answer answer;
    };
    bool finish(std::optional<QList<QUrl>> result);
    struct SaveDialog
    {
        SaveDialogRequest request;
        QPointer<QObject> context;
        SaveAnswer answer;
    };
    bool finishSave(std::optional<QUrl> result);
    QList<SaveDialog> m_saves;

    QList<OpenDialog> m_open;
};
