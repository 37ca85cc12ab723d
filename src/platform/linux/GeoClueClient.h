#pragma once

#include "platform/Location.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>

class QDBusObjectPath;

// One client of GeoClue 2 on the system bus, from CreateClient to DeleteClient: it starts, says
// whether GeoClue let it, and when asked for, delivers the first location. Every call is
// asynchronous; answers that arrive after the client is gone are dropped with it.
class GeoClueClient : public QObject
{
    Q_OBJECT
public:
    // Why GeoClue did not start the client.
    enum class Refusal {
        // GeoClue said no: its configuration, or the desktop's agent (location services off).
        denied,
        // No GeoClue (2.5 or later) on this system bus, or no system bus at all.
        absent,
        // No answer in time, or an answer this client does not understand.
        failed,
    };

    static constexpr const char* service = "org.freedesktop.GeoClue2";

    // `locate`: wait for a location after the start, rather than only asking to start.
    GeoClueClient(QDBusConnection bus, QString desktopId, bool locate, QObject* parent = nullptr);
    // Stops and deletes GeoClue's client, without waiting for the answers.
    ~GeoClueClient() override;

    void start();

    // The error names of a refused call, as a refusal.
    static Refusal refusal(const QString& errorName);
    // A location object's properties as a fix; a negative accuracy when they are unusable.
    static LocationFix fix(const QVariantMap& properties);

Q_SIGNALS:
    void started();
    void refused(GeoClueClient::Refusal why);
    void located(const LocationFix& fix);

private Q_SLOTS:
    void locationUpdated(const QDBusObjectPath& previous, const QDBusObjectPath& current);

private:
    void call(const QDBusMessage& message, std::function<void(const QDBusMessage&)> answer);
    void setClientProperty(const QString& name, const QVariant& value);
    void startAnswered(const QDBusMessage& reply);
    void readLocation(const QString& path);
    void refuse(const QDBusMessage& reply);

    QDBusConnection m_bus;
    QString m_desktopId;
    bool m_locate;
    QString m_path;
    bool m_running = false;
    bool m_reading = false;
};
