#include "platform/linux/LinuxDialogs.h"

#include "platform/linux/FileAndFolderDialog.h"

#include <QPointer>

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
