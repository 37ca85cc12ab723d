#include "productivity/ShelfFileList.h"

#include "productivity/Shelf.h"
#include "productivity/ShelfTexts.h"

#include <QMimeData>

ShelfFileList::ShelfFileList(Shelf& shelf, QObject* parent)
    : QAbstractListModel(parent), m_shelf(shelf), m_files(shelf.files())
{
    connect(&shelf, &Shelf::filesChanged, this, &ShelfFileList::reload);
}

void ShelfFileList::reload()
{
    beginResetModel();
    m_files = m_shelf.files();
    endResetModel();
}

int ShelfFileList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_files.size());
}

QVariant ShelfFileList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const QUrl& url = m_files.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return ShelfTexts::itemName(url);
    case Qt::ToolTipRole:
        return url.toLocalFile();
    case urlRole:
        return url;
    default:
        return {};
    }
}

Qt::ItemFlags ShelfFileList::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

QStringList ShelfFileList::mimeTypes() const
{
    return {QStringLiteral("text/uri-list")};
}

QMimeData* ShelfFileList::mimeData(const QModelIndexList& indexes) const
{
    QList<QUrl> urls;
    for (const QModelIndex& index : indexes) {
        if (index.isValid() && index.row() < m_files.size())
            urls.append(m_files.at(index.row()));
    }
    auto* data = new QMimeData;
    data->setUrls(urls);
    return data;
}
