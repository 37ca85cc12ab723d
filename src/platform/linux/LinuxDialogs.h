#pragma once

#include "platform/Dialogs.h"

// Open and save dialogs as Qt's own file dialog, kept above the always-on-top panel.
//
// For tests, BRENLOW_CAPTURE_DESTINATION, read only when set, answers every save dialog with that
// path without showing one.
class LinuxDialogs final : public Dialogs
{
public:
    void open(const OpenDialogRequest& request, QObject* context, Answer answer) override;
    void save(const SaveDialogRequest& request, QObject* context, SaveAnswer answer) override;
};
