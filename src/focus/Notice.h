#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

// One event of the activity list.
struct Notice
{
    QUuid id;
    QString title;
    QString detail;
    QDateTime date;

    bool operator==(const Notice&) const = default;

    // The stored list: a JSON array, newest first, every key required.
    static QByteArray encodeList(const QList<Notice>& notices);
    static std::optional<QList<Notice>> decodeList(const QByteArray& json);
};

// Every member moves by its bytes, so a list of a hundred thousand notices makes room at its
// head with one memmove instead of copying each notice.
Q_DECLARE_TYPEINFO(Notice, Q_RELOCATABLE_TYPE);
