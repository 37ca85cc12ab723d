#pragma once

#include "settings/StorageDamage.h"
#include "settings/WriteProblem.h"

#include <QList>
#include <QString>

// The German texts of the settings on disk: damaged data that was kept aside, and writes that
// failed or came back.
namespace StorageTexts {

// What could not be read, for StorageDamage::what.
QString settingsDatabase();
QString legacyFile();
QString legacyEntries(qsizetype count);
QString storedKey(const QString& key);

QString damageTitle();
QString damageDetail(const StorageDamage& damage);
// One line for the status line, however many things were damaged.
QString damageMessage(const QList<StorageDamage>& damages);

QString reason(WriteProblem problem);
QString writeFailedTitle();
QString writeFailedDetail(WriteProblem problem);
QString writeFailedMessage(WriteProblem problem);
QString writesRecoveredTitle();
QString writesRecoveredMessage();
// An existing file that could not be opened is left alone for the whole session.
QString openFailedDetail(WriteProblem problem);
QString openFailedMessage(WriteProblem problem);

} // namespace StorageTexts
