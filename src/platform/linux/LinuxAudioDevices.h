#pragma once

#include "platform/AudioDevices.h"

#include <QMutex>
#include <QTimer>

#include <vector>

struct pa_context;
struct pa_glib_mainloop;
struct pa_operation;
struct pa_server_info;
struct pa_sink_info;
struct pa_source_info;
struct pa_source_output_info;

// PulseAudio's client library (PipeWire's pulse server answers the same) on Qt's own GLib main
// loop: nothing here blocks. The server's change events re-read its lists into a snapshot that
// readers on any thread copy under a lock. A server that goes away is waited for again.
class LinuxAudioDevices final : public AudioDevices
{
    Q_OBJECT
public:
    explicit LinuxAudioDevices(QObject* parent = nullptr);
    ~LinuxAudioDevices() override;

    std::optional<AudioInputState> defaultInput() const override;
    std::optional<QList<AudioDeviceInfo>> devices() const override;
    void setInputMute(bool muted, QObject* context, std::function<void(bool)> done) override;

    // Whether the server answered and the snapshot is filled.
    bool connected() const;

private:
    struct Source
    {
        quint32 index = 0;
        QString name;
        QString description;
        QString bus;
        bool muted = false;
        bool monitor = false;
    };
    struct Snapshot
    {
        QString defaultSource;
        QList<Source> sources;
        QList<AudioDeviceInfo> sinks;
        // Source index of every stream that records right now.
        QList<quint32> recordingFrom;
    };
    struct MuteRequest;

    void connectToServer();
    void dropContext();
    void readAll();
    void track(pa_operation* operation);
    void finishOne();
    void publish();

    static void onState(pa_context* context, void* self);
    static void onEvent(pa_context* context, int type, quint32 index, void* self);
    static void onServerInfo(pa_context* context, const pa_server_info* info, void* self);
    static void onSourceInfo(pa_context* context, const pa_source_info* info, int eol, void* self);
    static void onSinkInfo(pa_context* context, const pa_sink_info* info, int eol, void* self);
    static void onSourceOutputInfo(pa_context* context, const pa_source_output_info* info, int eol,
                                   void* self);
    static void onMuteWritten(pa_context* context, int success, void* request);

    pa_glib_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
    std::vector<pa_operation*> m_operations;
    int m_pending = 0;
    bool m_readAgain = false;
    Snapshot m_building;
    QTimer m_reconnect;

    mutable QMutex m_mutex;
    bool m_ready = false;
    Snapshot m_snapshot;
};
