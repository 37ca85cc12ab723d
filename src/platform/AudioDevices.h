#pragma once

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

// The default input device: whether some application records from it and its mute switch.
struct AudioInputState
{
    bool running = false;
    bool muted = false;
    bool muteSettable = false;
};

// One device of the audio system, sink or source.
struct AudioDeviceInfo
{
    QString transport;
    QString name;

    static QString bluetooth() { return QStringLiteral("bluetooth"); }
};

// The audio system's devices. Readings may be asked from a worker thread; changes come on the
// main thread.
class AudioDevices : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // Nothing when there is no default input or the audio system does not answer.
    virtual std::optional<AudioInputState> defaultInput() const = 0;
    // Every device in the audio system's order; nothing when the list cannot be read.
    virtual std::optional<QList<AudioDeviceInfo>> devices() const = 0;
    // Switches the default input's mute; `done` gets whether the system took it, while
    // `context` lives. Main thread.
    virtual void setInputMute(bool muted, QObject* context, std::function<void(bool)> done) = 0;

Q_SIGNALS:
    void changed();
};
