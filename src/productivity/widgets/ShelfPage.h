#pragma once

#include <QUrl>
#include <QWidget>

class Shelf;
class ShelfFileList;
class ShelfFileView;
class QHBoxLayout;
class QPushButton;

// The "Ablage" page: the files on the shelf (removable, draggable out, openable), the share
// button, the add buttons and the favourite apps ("APP-FAVORITEN").
class ShelfPage : public QWidget
{
    Q_OBJECT
public:
    explicit ShelfPage(Shelf& shelf, QWidget* parent = nullptr);

    // Names as shown, for the files and the apps.
    QStringList fileNames() const;
    QStringList appNames() const;
    bool showsEmptyState() const;
    ShelfFileView* fileView() const { return m_view; }
    // A button of the page by its text (the favourites by their app's name).
    QPushButton* button(const QString& text) const;

Q_SIGNALS:
    void chooseRequested(bool appOnly);
    void shareRequested(const QList<QUrl>& files);
    void openRequested(const QUrl& url);

private:
    void rebuildApps();
    void showFiles();

    Shelf& m_shelf;
    ShelfFileList* m_list;
    ShelfFileView* m_view;
    QWidget* m_empty;
    QHBoxLayout* m_apps;
};
