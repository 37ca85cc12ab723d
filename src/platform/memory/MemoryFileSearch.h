#pragma once

#include "platform/FileSearch.h"

#include <QPointer>

// A file index over a list of paths. Answers arrive queued, as the real index's do; a test can
// also hold them back to play a slow index.
class MemoryFileSearch final : public FileSearch
{
public:
    void findByName(const QString& text, int limit, QObject* context, Answer answer) override;
    QStringList applicationFolders() const override { return applications; }
    QStringList defaultAppFolders() const override { return defaultApps; }

    // Answers every held query; false when none was waiting.
    bool answerHeld();
    int held() const { return int(m_held.size()); }

    // The indexed paths; with `available` off the index cannot be asked.
    QStringList files;
    bool available = true;
    // Queries wait for answerHeld() instead of answering by themselves.
    bool holdAnswers = false;
    QStringList applications;
    QStringList defaultApps;
    // Every query text asked so far.
    QStringList queries;

private:
    struct Query
    {
        QString text;
        int limit;
        QPointer<QObject> context;
        Answer answer;
    };
    std::optional<QStringList> matches(const QString& text, int limit) const;
    QList<Query> m_held;
};
