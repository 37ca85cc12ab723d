#pragma once

#include "clipboard/ClipKind.h"
#include "clipboard/VisibleClips.h"
#include "common/Scheduler.h"
#include "common/SerialQueue.h"

#include <QAbstractListModel>

#include <atomic>
#include <memory>

class ClipboardHistory;
class Clock;
class Productivity;

// The rows of the history page ("Verlauf"): the favourites, then the history, each kept when it
// matches the chosen filter and search text. A capture inserts or moves one row; a new filter,
// search text or set of favourites rebuilds the rows. A long history is rebuilt off the main
// thread, the search text after a short pause in typing; the rows on show stay until the new
// ones are ready, and an answer overtaken by a newer change is dropped.
class HistoryListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged)

public:
    enum Role {
        TextRole = Qt::UserRole + 1, // the whole text
        IdRole,
        DateRole,
        PinnedRole,
        KindRole,    // the kind's label
        CaptionRole, // the second line: kind and time of the last copy
    };
    Q_ENUM(Role)

    // Longest display text of a row; the rest of a long copy is never laid out.
    static constexpr qsizetype previewLength = 300;
    // Histories with more text than this (a few milliseconds of searching) are rebuilt off the
    // main thread.
    static constexpr qint64 backgroundBytes = 8'000'000;
    // How long typing must pause before a long history is searched.
    static constexpr double searchPause = 0.15;

    HistoryListModel(ClipboardHistory& history, Productivity& productivity, Clock& clock,
                     Scheduler& scheduler, QObject* parent = nullptr);

    ClipKind filter() const { return m_filter; }
    void setFilter(ClipKind filter);
    const QString& search() const { return m_search; }
    void setSearch(const QString& search);
    bool isEmpty() const { return m_rows.rows.isEmpty(); }
    // No rebuild is waiting or running: the rows match the current choice.
    bool isSettled() const { return !m_pending; }
    // Where a rebuild runs off the main thread (tests lower it to reach that path).
    void setBackgroundThreshold(qint64 bytes) { m_backgroundThreshold = bytes; }

    // The row's clip; an invalid row gives nothing.
    std::optional<Clip> clipAt(int row) const;
    bool isPinnedRow(int row) const { return row >= 0 && row < m_rows.pinnedCount; }
    // Row actions of the page.
    void copyBack(int row);
    void togglePin(int row);
    void remove(int row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void filterChanged();
    void searchChanged();
    // A rebuild finished (the rows may or may not have changed).
    void settled();

private:
    // Which rows the current choice keeps, worked out now or on the worker.
    void rebuild(bool afterPause);
    // One rebuild at a time on the worker; a change meanwhile starts the next when it answers.
    void startBackgroundRebuild();
    void backgroundRebuildAnswered(quint64 generation, VisibleRows rows);
    void replaceRows(VisibleRows rows);
    QList<PinnedText> pinnedTexts() const;
    int rowOf(qint32 slot) const;
    QString textOf(qint32 slot) const;
    void clipArrivedOnTop(std::optional<int> movedFrom);
    void clipRemoved(quint32 slot);

    ClipboardHistory& m_history;
    Productivity& m_productivity;
    Clock& m_clock;
    ClipKind m_filter = ClipKind::all;
    QString m_search;
    VisibleRows m_rows;
    qint64 m_backgroundThreshold = backgroundBytes;
    // Counts rebuilds; an answer for an older one is dropped, and the worker skips a rebuild that
    // is already outdated when its turn comes.
    quint64 m_generation = 0;
    std::shared_ptr<std::atomic<quint64>> m_latest = std::make_shared<std::atomic<quint64>>(0);
    bool m_pending = false;
    bool m_inFlight = false;
    ScheduledWork m_searchPause;
    SerialQueue m_worker{QStringLiteral("Brenlow.history")};
};
