#pragma once

#include "platform/Accessibility.h"

#include <QList>
#include <QString>
#include <QUuid>

// One readable menu command of another application, kept so it can be pressed later.
struct CommandItem
{
    QUuid id;
    // "Top-level menu › item", or the item's title alone under an untitled menu.
    QString name;
    // The rendered shortcut, for example ⇧⌘N.
    QString keys;
    AXElement element;
    qint32 pid = 0;
    // Whether the item was enabled when it was read.
    bool enabled = false;
};
Q_DECLARE_METATYPE(CommandItem)
