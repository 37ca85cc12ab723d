#pragma once

#include <QWidget>

class Shelf;
class QVBoxLayout;

// The "Ablage" page: the files on the shelf with a remove control each, then the favourite apps.
class ShelfPage : public QWidget
{
    Q_OBJECT
public:
    explicit ShelfPage(Shelf& shelf, QWidget* parent = nullptr);

    // Names as shown, for the files and the apps.
    QStringList fileNames() const;
    QStringList appNames() const;
    bool showsEmptyState() const;

private:
    void rebuild();

    Shelf& m_shelf;
    QWidget* m_empty;
    QVBoxLayout* m_files;
    QVBoxLayout* m_apps;
};
