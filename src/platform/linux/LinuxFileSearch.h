#pragma once

#include "common/SerialQueue.h"
#include "platform/FileSearch.h"

#include <QDBusConnection>

#include <memory>

// Tracker 3's file index, asked through libtracker-sparql on the "Brenlow.search" queue, when
// its miner runs on the session bus. The miner is never started by asking: a desktop without it
// has no file index, and the search says so.
class LinuxFileSearch final : public FileSearch
{
public:
    explicit LinuxFileSearch(QDBusConnection bus = QDBusConnection::sessionBus());
    ~LinuxFileSearch() override;

    void findByName(const QString& text, int limit, QObject* context, Answer answer) override;
    QStringList applicationFolders() const override;
    QStringList defaultAppFolders() const override;

    static constexpr const char* minerService = "org.freedesktop.Tracker3.Miner.Files";

private:
    class Index;
    QDBusConnection m_bus;
    std::shared_ptr<Index> m_index;
    SerialQueue m_queue{QStringLiteral("Brenlow.search")};
};
