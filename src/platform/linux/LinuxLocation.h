#pragma once

#include "platform/Location.h"

class QGeoPositionInfo;
class QGeoPositionInfoSource;
class WebGeocoder;

// The position through Qt Positioning's GeoClue 2 source; the places through web geocoders.
//
// GeoClue has no question of its own to ask: its agent (the desktop shell) decides when a client
// starts. So the authorization stays "not determined" until a request was answered: a fix means
// authorized, an access error denied, and a desktop without GeoClue counts as restricted.
class LinuxLocation final : public Location
{
    Q_OBJECT
public:
    // The desktop file this program is known by to GeoClue's agent.
    static constexpr const char* desktopId = "brenlow";

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
    bool ensureSource();
    void setAuthorization(LocationAuthorization authorization);
    void positionArrived(const QGeoPositionInfo& info);
    void sourceFailed(int error);

    QGeoPositionInfoSource* m_source = nullptr;
    bool m_sourceTried = false;
    LocationAuthorization m_authorization = LocationAuthorization::notDetermined;
    bool m_asking = false;
    bool m_locating = false;
    WebGeocoder* m_geocoder;
};
