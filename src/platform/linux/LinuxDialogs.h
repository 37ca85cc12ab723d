#pragma once

#include "platform/Dialogs.h"

// Open dialogs as Qt's own file dialog, kept above the always-on-top panel.
class LinuxDialogs final : public Dialogs
{
public:
    void open(const OpenDialogRequest& request, QObject* context, Answer answer) override;
};
