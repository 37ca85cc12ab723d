#include "SettingsTests.h"

#include "focus/Notice.h"
#include "model/Model.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace SettingsTestSupport {

QByteArray readFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.write(bytes);
}

QByteArray formerDocument(const QList<std::pair<QString, QJsonValue>>& entries)
{
    QJsonObject root;
    for (const auto& [key, entry] : entries)
        root.insert(key, entry);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

QString keptCopy(const Model& model)
{
    static const QRegularExpression path(QStringLiteral("Das Original liegt unter (/.+)\\.$"));
    for (const Notice& notice : model.notices()) {
        if (notice.title != u"Gespeicherte Daten nicht lesbar")
            continue;
        const auto match = path.match(notice.detail);
        return match.hasMatch() ? match.captured(1) : QString();
    }
    return {};
}

int noticesTitled(const Model& model, const QString& title)
{
    return int(std::count_if(model.notices().cbegin(), model.notices().cend(),
                             [&title](const Notice& notice) { return notice.title == title; }));
}

} // namespace SettingsTestSupport
