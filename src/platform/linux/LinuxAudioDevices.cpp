#include "platform/linux/LinuxAudioDevices.h"

#include "common/Log.h"

#include <QAbstractEventDispatcher>
#include <QPointer>

#include <pulse/glib-mainloop.h>
#include <pulse/pulseaudio.h>

#include <algorithm>

namespace {
constexpr int reconnectDelayMs = 2000;

LinuxAudioDevices* owner(void* self)
{
    return static_cast<LinuxAudioDevices*>(self);
}

QString proplistValue(pa_proplist* properties, const char* key)
{
    const char* value = properties ? pa_proplist_gets(properties, key) : nullptr;
    return value ? QString::fromUtf8(value) : QString();
}

// Level meters (the mixer's bars) read a source without recording from it.
bool isPeakMeter(const pa_source_output_info* info)
{
    return info->resample_method && qstrcmp(info->resample_method, "peaks") == 0;
}
} // namespace

struct LinuxAudioDevices::MuteRequest
{
    LinuxAudioDevices* devices;
    QPointer<QObject> context;
    std::function<void(bool)> done;
    QString source;
    bool muted;
    pa_operation* operation = nullptr;
};

LinuxAudioDevices::LinuxAudioDevices(QObject* parent) : AudioDevices(parent)
{
    m_reconnect.setSingleShot(true);
    m_reconnect.setInterval(reconnectDelayMs);
    connect(&m_reconnect, &QTimer::timeout, this, &LinuxAudioDevices::connectToServer);
    // The GLib main loop only turns while Qt runs on GLib, which it does on Linux unless
    // QT_NO_GLIB is set.
    const QAbstractEventDispatcher* dispatcher = QAbstractEventDispatcher::instance();
    if (!dispatcher || !dispatcher->inherits("QEventDispatcherGlib")) {
        qCWarning(lcPlatform) << "no GLib event loop: the audio devices are not read";
        return;
    }
    m_loop = pa_glib_mainloop_new(nullptr);
    connectToServer();
}

LinuxAudioDevices::~LinuxAudioDevices()
{
    dropContext();
    if (m_loop)
        pa_glib_mainloop_free(m_loop);
}

void LinuxAudioDevices::connectToServer()
{
    dropContext();
    pa_proplist* properties = pa_proplist_new();
    pa_proplist_sets(properties, PA_PROP_APPLICATION_NAME, "Brenlow");
    pa_proplist_sets(properties, PA_PROP_APPLICATION_ID, "brenlow");
    m_context = pa_context_new_with_proplist(pa_glib_mainloop_get_api(m_loop), "Brenlow", properties);
    pa_proplist_free(properties);
    pa_context_set_state_callback(m_context, &LinuxAudioDevices::onState, this);
    // No spawning an audio server of our own; without one we wait until it comes.
    if (pa_context_connect(m_context, nullptr, pa_context_flags_t(PA_CONTEXT_NOFAIL | PA_CONTEXT_NOAUTOSPAWN),
                           nullptr) < 0) {
        qCInfo(lcPlatform) << "audio server not reachable:" << pa_strerror(pa_context_errno(m_context));
        m_reconnect.start();
    }
}

void LinuxAudioDevices::dropContext()
{
    for (pa_operation* operation : m_operations) {
        pa_operation_cancel(operation);
        pa_operation_unref(operation);
    }
    m_operations.clear();
    m_pending = 0;
    m_readAgain = false;
    if (!m_context)
        return;
    pa_context_set_state_callback(m_context, nullptr, nullptr);
    pa_context_set_subscribe_callback(m_context, nullptr, nullptr);
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    m_context = nullptr;
}

void LinuxAudioDevices::onState(pa_context* context, void* self)
{
    LinuxAudioDevices* devices = owner(self);
    switch (pa_context_get_state(context)) {
    case PA_CONTEXT_READY: {
        pa_context_set_subscribe_callback(
            context,
            [](pa_context* c, pa_subscription_event_type_t type, uint32_t index, void* s) {
                onEvent(c, int(type), index, s);
            },
            self);
        const auto mask =
            pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SERVER | PA_SUBSCRIPTION_MASK_SOURCE |
                                   PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE_OUTPUT);
        pa_operation_unref(pa_context_subscribe(context, mask, nullptr, nullptr));
        devices->readAll();
        break;
    }
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED: {
        qCInfo(lcPlatform) << "audio server gone:" << pa_strerror(pa_context_errno(context));
        {
            QMutexLocker lock(&devices->m_mutex);
            devices->m_ready = false;
            devices->m_snapshot = {};
        }
        // Not from inside the context's own callback: a fresh context comes from the timer.
        devices->m_reconnect.start();
        Q_EMIT devices->changed();
        break;
    }
    default:
        break;
    }
}

void LinuxAudioDevices::onEvent(pa_context*, int, quint32, void* self)
{
    owner(self)->readAll();
}

void LinuxAudioDevices::readAll()
{
    if (m_pending > 0) {
        m_readAgain = true;
        return;
    }
    m_building = {};
    m_pending = 4;
    track(pa_context_get_server_info(m_context, &LinuxAudioDevices::onServerInfo, this));
    track(pa_context_get_source_info_list(m_context, &LinuxAudioDevices::onSourceInfo, this));
    track(pa_context_get_sink_info_list(m_context, &LinuxAudioDevices::onSinkInfo, this));
    track(pa_context_get_source_output_info_list(m_context, &LinuxAudioDevices::onSourceOutputInfo, this));
}

void LinuxAudioDevices::track(pa_operation* operation)
{
    if (!operation) {
        finishOne();
        return;
    }
    m_operations.push_back(operation);
}

void LinuxAudioDevices::finishOne()
{
    // Finished operations are released here, all of them once the batch is complete.
    if (--m_pending > 0)
        return;
    for (pa_operation* operation : m_operations)
        pa_operation_unref(operation);
    m_operations.clear();
    publish();
    if (m_readAgain) {
        m_readAgain = false;
        readAll();
    }
}

void LinuxAudioDevices::onServerInfo(pa_context*, const pa_server_info* info, void* self)
{
    LinuxAudioDevices* devices = owner(self);
    if (info && info->default_source_name)
        devices->m_building.defaultSource = QString::fromUtf8(info->default_source_name);
    devices->finishOne();
}

void LinuxAudioDevices::onSourceInfo(pa_context*, const pa_source_info* info, int eol, void* self)
{
    LinuxAudioDevices* devices = owner(self);
    if (eol != 0) {
        devices->finishOne();
        return;
    }
    Source source;
    source.index = info->index;
    source.name = QString::fromUtf8(info->name);
    source.description = QString::fromUtf8(info->description ? info->description : info->name);
    source.bus = proplistValue(info->proplist, PA_PROP_DEVICE_BUS);
    source.muted = info->mute != 0;
    source.monitor = info->monitor_of_sink != PA_INVALID_INDEX;
    devices->m_building.sources.append(source);
}

void LinuxAudioDevices::onSinkInfo(pa_context*, const pa_sink_info* info, int eol, void* self)
{
    LinuxAudioDevices* devices = owner(self);
    if (eol != 0) {
        devices->finishOne();
        return;
    }
    devices->m_building.sinks.append({proplistValue(info->proplist, PA_PROP_DEVICE_BUS),
                                      QString::fromUtf8(info->description ? info->description : info->name)});
}

void LinuxAudioDevices::onSourceOutputInfo(pa_context*, const pa_source_output_info* info, int eol,
                                           void* self)
{
    LinuxAudioDevices* devices = owner(self);
    if (eol != 0) {
        devices->finishOne();
        return;
    }
    if (!info->corked && !isPeakMeter(info))
        devices->m_building.recordingFrom.append(info->source);
}

void LinuxAudioDevices::publish()
{
    {
        QMutexLocker lock(&m_mutex);
        m_ready = true;
        m_snapshot = m_building;
    }
    Q_EMIT changed();
}

bool LinuxAudioDevices::connected() const
{
    QMutexLocker lock(&m_mutex);
    return m_ready;
}

std::optional<AudioInputState> LinuxAudioDevices::defaultInput() const
{
    QMutexLocker lock(&m_mutex);
    if (!m_ready)
        return std::nullopt;
    for (const Source& source : m_snapshot.sources) {
        if (source.name != m_snapshot.defaultSource)
            continue;
        AudioInputState state;
        // A monitor only repeats what plays; nobody records a microphone from it.
        state.running = !source.monitor && m_snapshot.recordingFrom.contains(source.index);
        state.muted = source.muted;
        // The server mutes every source, in hardware where it can and in software otherwise.
        state.muteSettable = true;
        return state;
    }
    return std::nullopt;
}

std::optional<QList<AudioDeviceInfo>> LinuxAudioDevices::devices() const
{
    QMutexLocker lock(&m_mutex);
    if (!m_ready)
        return std::nullopt;
    QList<AudioDeviceInfo> list = m_snapshot.sinks;
    for (const Source& source : m_snapshot.sources) {
        if (!source.monitor)
            list.append({source.bus, source.description});
    }
    return list;
}

void LinuxAudioDevices::setInputMute(bool muted, QObject* context, std::function<void(bool)> done)
{
    QString source;
    {
        QMutexLocker lock(&m_mutex);
        if (m_ready)
            source = m_snapshot.defaultSource;
    }
    auto* request = new MuteRequest{this, context, std::move(done), source, muted};
    pa_operation* operation = nullptr;
    if (m_context && !source.isEmpty() && pa_context_get_state(m_context) == PA_CONTEXT_READY)
        operation = pa_context_set_source_mute_by_name(m_context, source.toUtf8().constData(), muted,
                                                       &LinuxAudioDevices::onMuteWritten, request);
    if (!operation) {
        // Answered on the next turn of the loop, as a written mute would be.
        QMetaObject::invokeMethod(
            this,
            [request] {
                if (request->context)
                    request->done(false);
                delete request;
            },
            Qt::QueuedConnection);
        return;
    }
    // The operation keeps itself alive until its callback ran (also when the context fails).
    pa_operation_unref(operation);
}

void LinuxAudioDevices::onMuteWritten(pa_context*, int success, void* data)
{
    auto* request = static_cast<MuteRequest*>(data);
    LinuxAudioDevices* devices = request->devices;
    if (success) {
        // The change event's fresh lists follow; until then the snapshot already says it.
        QMutexLocker lock(&devices->m_mutex);
        for (Source& source : devices->m_snapshot.sources) {
            if (source.name == request->source)
                source.muted = request->muted;
        }
    }
    if (request->context)
        request->done(success != 0);
    delete request;
    if (success)
        Q_EMIT devices->changed();
}
