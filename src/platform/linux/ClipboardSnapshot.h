#pragma once

#include <QMetaType>
#include <QString>
#include <QStringList>

#include <optional>

// One reading of the CLIPBOARD, handed from the reading thread to the main thread.
struct ClipboardSnapshot
{
    // The reader's count of owner changes when this content appeared: the answer's staleness
    // token. 0 is the content that was there before the first change.
    quint64 change = 0;
    QStringList types;
    // Nothing when the content has no text, is concealed, or is too large to be kept.
    std::optional<QString> text;
    // The owner did not hand its content over in time.
    bool unreadable = false;
};

Q_DECLARE_METATYPE(ClipboardSnapshot)
