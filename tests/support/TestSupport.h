#pragma once

#include "model/Model.h"
#include "platform/memory/MemoryPlatform.h"
#include "settings/Defaults.h"

#include <QStandardPaths>
#include <QUuid>

#include <memory>

// Keeps tests away from the user's files; call first in initTestCase().
inline void enterTestMode()
{
    QStandardPaths::setTestModeEnabled(true);
}

// A private settings domain that is removed, with every file it left, when the test is done.
class ScratchDomain
{
public:
    explicit ScratchDomain(QString folder = Defaults::standardFolder())
        : name(QStringLiteral("Brenlow.Tests.") + QUuid::createUuid().toString(QUuid::WithoutBraces)),
          folder(std::move(folder)), defaults(std::make_unique<Defaults>(name, this->folder))
    {}
    ~ScratchDomain()
    {
        defaults.reset();
        Defaults::removeDomain(name, folder);
    }
    // A fresh Defaults object over the same file, as after a restart.
    Defaults& reopen()
    {
        defaults.reset();
        defaults = std::make_unique<Defaults>(name, folder);
        return *defaults;
    }

    QString name;
    QString folder;
    std::unique_ptr<Defaults> defaults;
};

// A model without services on the memory platform, recreatable over the same domain.
class ModelFixture
{
public:
    explicit ModelFixture(std::optional<QString> historyPath = std::nullopt)
        : historyPath(std::move(historyPath))
    {
        model = std::make_unique<Model>(*domain.defaults, memory.platform(), false, memory.pasteboard,
                                        this->historyPath);
    }
    // Quits and starts again over the same settings and clipboard file.
    Model& restart()
    {
        model.reset();
        model = std::make_unique<Model>(domain.reopen(), memory.platform(), false, memory.pasteboard,
                                        historyPath);
        return *model;
    }

    MemoryPlatform memory;
    ScratchDomain domain;
    std::optional<QString> historyPath;
    std::unique_ptr<Model> model;
};
