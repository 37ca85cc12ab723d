#pragma once

#include "clipboard/ClipKind.h"
#include "clipboard/VisibleClips.h"

#include <QAbstractListModel>
#include <QPointer>

class ClipboardHistory;
class Clock;
class Productivity;

// The rows of the history page ("Verlauf"): the visible clips for the chosen filter and search
// text, rebuilt when the history, the favourites or the choice change. Rows are computed when
// first asked for after a change, so a hidden page costs nothing per copy.
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

    HistoryListModel(ClipboardHistory& history, Productivity& productivity, Clock& clock,
                     QObject* parent = nullptr);

    ClipKind filter() const { return m_filter; }
    void setFilter(ClipKind filter);
    const QString& search() const { return m_search; }
    void setSearch(const QString& search);
    bool isEmpty() const { return rowCount() == 0; }

    // The row's clip; an invalid row gives nothing.
    std::optional<ClipRow> rowAt(int row) const;
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

private:
    void invalidate();
    const QList<ClipRow>& rows() const;

    ClipboardHistory& m_history;
    Productivity& m_productivity;
    Clock& m_clock;
    ClipKind m_filter = ClipKind::all;
    QString m_search;
    mutable QList<ClipRow> m_rows;
    mutable bool m_stale = true;
};
