#pragma once

#include "platform/Dialogs.h"

#include <QFileDialog>

// Qt's own file dialog, set up for one open request. Asked for folders as well as files, its
// accept button takes a selected folder instead of entering it (the desktop's native dialogs
// offer either files or folders, never both). Double-clicking a folder still enters it, and a
// typed path that ends in "/" still navigates.
class FileAndFolderDialog final : public QFileDialog
{
    Q_OBJECT
public:
    explicit FileAndFolderDialog(const OpenDialogRequest& request, QWidget* parent = nullptr);

    void accept() override;

private:
    bool m_directories;
};
