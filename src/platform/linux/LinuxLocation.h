#pragma once

#include "platform/Location.h"
#include "platform/linux/GeoClueClient.h"

#include <QPointer>
#include <QTimer>

class WebGeocoder;

// The position from GeoClue 2 on the system bus; the places through web geocoders.
//
// GeoClue decides when a client starts, so the authorization is the answer to starting one:
// started means authorized, GeoClue's refusal denied (its configuration, or the desktop's agent
// with location services off), and no GeoClue on the bus restricted. GeoClue 2.6 asks the agent
// about sandboxed programs only; for the others it reads the accuracy the agent allows.
// `desktopId` names this program in GeoClue's configuration and to the agent; it matches the
// launcher entry "brenlow.desktop" that the program writes at every start.
class LinuxLocation final : public Location
{
    Q_OBJECT
public:
    static constexpr const char* desktopId = "brenlow";
    // Longer than the store's own 20 s, so that its "not available now" decides first.
    static constexpr int fixTimeoutMs = 25'000;

    explicit LinuxLocation(QObject* parent = nullptr);
    ~LinuxLocation() override;

    LocationAuthorization authorization() const override { return m_authorization; }
    void requestAuthorization() override;
    void requestLocation() override;
    void stopUpdatingLocation() override;
    void reverseGeocode(double latitude, double longitude, Answer answer) override;
    void cancelReverseGeocode() override;
    void geocode(const QString& text, Answer answer) override;
    void cancelGeocode() override;
    bool openSettings() override;

private:
    GeoClueClient* startClient(bool locate);
    void setAuthorization(LocationAuthorization authorization);
    // What a refusal says about the authorization; a failure says nothing.
    void refusedWith(GeoClueClient::Refusal why);
    void fixFailed();
    static void drop(QPointer<GeoClueClient>& client);

    LocationAuthorization m_authorization = LocationAuthorization::notDetermined;
    QPointer<GeoClueClient> m_asking;
    QPointer<GeoClueClient> m_locating;
    QTimer m_fixTimeout;
    WebGeocoder* m_geocoder;
};
