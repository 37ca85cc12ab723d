#pragma once

#include "platform/Location.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QUrl>

#include <memory>

class BoundedDownload;
class QNetworkAccessManager;

// Places for points and names from web services: the place of a point from Nominatim's
// `reverse` (at most one request a second, as its terms ask), places for a name from the
// Open-Meteo geocoding API. Both in German, both with our User-Agent; answers are capped in size.
class WebGeocoder : public QObject
{
    Q_OBJECT
public:
    static constexpr qint64 answerLimit = 1'000'000;
    // No place on earth has a longer name: longer texts find nothing without a request.
    static constexpr qsizetype longestName = 200;
    static constexpr int resultCount = 10;

    explicit WebGeocoder(QObject* parent = nullptr);
    ~WebGeocoder() override;

    void reverse(double latitude, double longitude, Location::Answer answer);
    void cancelReverse();
    void search(const QString& text, Location::Answer answer);
    void cancelSearch();

    static QUrl reverseUrl(const QUrl& base, double latitude, double longitude);
    static QUrl searchUrl(const QUrl& base, const QString& text);
    // The services' documents; anything unreadable is a failed answer.
    static GeocodeAnswer parseReverse(const QByteArray& json);
    static GeocodeAnswer parseSearch(const QByteArray& json);

private:
    void startReverse();

    QNetworkAccessManager* m_network;
    std::unique_ptr<BoundedDownload> m_reverse;
    std::unique_ptr<BoundedDownload> m_search;
    // The reverse request waiting for its second to come.
    QTimer m_reverseDelay;
    QUrl m_reverseUrl;
    Location::Answer m_reverseAnswer;
    QElapsedTimer m_lastReverse;
};
