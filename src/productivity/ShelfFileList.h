#pragma once

#include <QAbstractListModel>
#include <QUrl>

class Shelf;

// The shelf's files as a list a view shows and drags from: dragging rows out hands their file
// URLs to whatever application they are dropped on.
class ShelfFileList : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role { urlRole = Qt::UserRole + 1 };

    explicit ShelfFileList(Shelf& shelf, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction | Qt::LinkAction; }

private:
    void reload();

    Shelf& m_shelf;
    QList<QUrl> m_files;
};
