#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// What the targets of a CLIPBOARD owner mean for a plain-text reader: which of them carries the
// text best, how its bytes become text, and which pasteboard types the content offers.
class X11TextTargets
{
public:
    // The best text target among the offered target names: UTF-8 by name first, then plain
    // text of the locale (UTF-8 here), then Latin-1, then whatever TEXT turns out to be.
    static std::optional<QByteArray> best(const QList<QByteArray>& offered);
    // The text in `data`, sent for a request of `target` as a property of type `type`. Nothing
    // when the encoding is one we cannot read (compound text with escape sequences).
    static std::optional<QString> decode(const QByteArray& target, const QByteArray& type, QByteArray data);
    // The pasteboard types of a content with these targets: the protocol's own targets left out,
    // the X11 text targets named text/plain as Qt names them, every other name as offered.
    static QStringList formats(const QList<QByteArray>& offered);
};
