#include "platform/linux/FileAndFolderDialog.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

#include <algorithm>

FileAndFolderDialog::FileAndFolderDialog(const OpenDialogRequest& request, QWidget* parent)
    : QFileDialog(parent), m_directories(request.directories)
{
    setOption(QFileDialog::DontUseNativeDialog);
    setWindowTitle(request.title);
    setAcceptMode(QFileDialog::AcceptOpen);
    if (request.files)
        setFileMode(request.multipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    else
        setFileMode(QFileDialog::Directory);
    const QString start = QFileInfo(request.startFolder).isDir() ? request.startFolder : QDir::homePath();
    setDirectory(start);
    if (!request.nameFilters.isEmpty())
        setNameFilters(request.nameFilters);
    // Qt's own strings are English unless its translations are installed; the ones a user reads
    // first are ours.
    setLabelText(QFileDialog::LookIn, QStringLiteral("Ort:"));
    setLabelText(QFileDialog::FileName, QStringLiteral("Name:"));
    setLabelText(QFileDialog::FileType, QStringLiteral("Typ:"));
    setLabelText(QFileDialog::Accept, QStringLiteral("Hinzufügen"));
    setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
}

void FileAndFolderDialog::accept()
{
    if (!m_directories || fileMode() == QFileDialog::Directory) {
        QFileDialog::accept();
        return;
    }
    const QStringList chosen = selectedFiles();
    const auto* name = findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const bool navigating = name && name->text().endsWith(QLatin1Char('/'));
    const bool allThere =
        !chosen.isEmpty() && std::all_of(chosen.cbegin(), chosen.cend(),
                                         [](const QString& path) { return QFileInfo::exists(path); });
    // Qt's own rules enter a folder and complain about missing names.
    if (navigating || !allThere) {
        QFileDialog::accept();
        return;
    }
    QDialog::accept();
}
