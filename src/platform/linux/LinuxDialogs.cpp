#include "platform/linux/LinuxDialogs.h"

#include "platform/linux/FileAndFolderDialog.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QPointer>
#include <QTimer>

void LinuxDialogs::open(const OpenDialogRequest& request, QObject* context, Answer answer)
{
    auto* dialog = new FileAndFolderDialog(request);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    // Above the panel, like a sheet over it: the panel cannot be clicked while it is up.
    dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    dialog->setWindowModality(Qt::ApplicationModal);
    QPointer<QObject> guard(context);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, guard, answer](int result) {
        if (!guard)
            return;
        if (result == QDialog::Accepted)
            answer(dialog->selectedUrls());
        else
            answer(std::nullopt);
    });
    dialog->open();
    dialog->raise();
    dialog->activateWindow();
}

void LinuxDialogs::save(const SaveDialogRequest& request, QObject* context, SaveAnswer answer)
{
    QPointer<QObject> guard(context);
    const QString fixed = qEnvironmentVariable("BRENLOW_CAPTURE_DESTINATION");
    if (!fixed.isEmpty()) {
        // Later, like a dialog the user answers: the caller finishes its own set-up first.
        QTimer::singleShot(0, context, [guard, answer, fixed] {
            if (guard)
                answer(QUrl::fromLocalFile(QFileInfo(fixed).absoluteFilePath()));
        });
        return;
    }
    auto* dialog = new QFileDialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setWindowTitle(request.title);
    dialog->setNameFilter(QStringLiteral("%1 (*.%2)").arg(request.typeName, request.extension));
    dialog->setDefaultSuffix(request.extension);
    const QString start = QFileInfo(request.startFolder).isDir() ? request.startFolder : QDir::homePath();
    dialog->setDirectory(start);
    dialog->selectFile(request.proposedName);
    dialog->setLabelText(QFileDialog::LookIn, QStringLiteral("Ort:"));
    dialog->setLabelText(QFileDialog::FileName, QStringLiteral("Name:"));
    dialog->setLabelText(QFileDialog::FileType, QStringLiteral("Typ:"));
    dialog->setLabelText(QFileDialog::Accept, QStringLiteral("Sichern"));
    dialog->setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
    // The message goes below the fields, where the eye lands before the button.
    if (auto* grid = qobject_cast<QGridLayout*>(dialog->layout()); grid && !request.message.isEmpty()) {
        auto* note = new QLabel(request.message, dialog);
        note->setWordWrap(true);
        grid->addWidget(note, grid->rowCount(), 0, 1, grid->columnCount());
    }
    dialog->setWindowFlag(Qt::WindowStaysOnTopHint);
    QObject::connect(dialog, &QDialog::finished, dialog, [dialog, guard, answer](int result) {
        if (!guard)
            return;
        const QList<QUrl> chosen = dialog->selectedUrls();
        if (result == QDialog::Accepted && !chosen.isEmpty())
            answer(chosen.first());
        else
            answer(std::nullopt);
    });
    dialog->open();
    dialog->raise();
    dialog->activateWindow();
}
