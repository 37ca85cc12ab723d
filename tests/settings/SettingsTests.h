#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QList>
#include <QString>

#include <utility>

class Model;

// The test classes of this program; main runs them in turn.
int runDomainTests(int argc, char** argv);
int runDamageTests(int argc, char** argv);
int runDiskFullTests(int argc, char** argv);
int runPrivacyTests(int argc, char** argv);
int runBoundsTests(int argc, char** argv);

namespace SettingsTestSupport {

QByteArray readFile(const QString& path);
void writeFile(const QString& path, const QByteArray& bytes);
// The document the settings used to be kept in: every value as {"type": …, "value": …}.
QByteArray formerDocument(const QList<std::pair<QString, QJsonValue>>& entries);
// The newest notice about unreadable data: the path it names for the kept original, or "".
QString keptCopy(const Model& model);
int noticesTitled(const Model& model, const QString& title);

} // namespace SettingsTestSupport
