#pragma once

#include <QObject>

#include <functional>

// One Brenlow per session: the first start owns a name on the session bus, a second start
// asks it to open its panel and ends. Without a session bus the check is skipped.
class SingleInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "app.brenlow.Brenlow")
public:
    static constexpr const char* serviceName = "app.brenlow.Brenlow";
    static constexpr const char* objectPath = "/app/brenlow/Brenlow";

    explicit SingleInstance(QObject* parent = nullptr);

    // True when this process is the only instance (or no bus is there to tell);
    // false after the running instance was asked to open its panel.
    bool claim();

    // Runs when a later start asks this instance to open its panel.
    std::function<void()> onReopen;

public Q_SLOTS:
    Q_SCRIPTABLE void Reopen();
};
