#pragma once

#include <QListView>

// The shelf's file rows: a name with a remove mark at the end. A click on the mark asks for
// removal, a double click opens the file, and rows drag out to other applications as files.
class ShelfFileView : public QListView
{
    Q_OBJECT
public:
    explicit ShelfFileView(QWidget* parent = nullptr);

    // Where the remove mark of a row is, in viewport coordinates.
    QRect removeMark(const QModelIndex& index) const;

Q_SIGNALS:
    void removeRequested(const QUrl& url);
    void openRequested(const QUrl& url);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};
