#pragma once

#include <QString>
#include <QUrl>

// Where Spotify's covers come from. The player names its covers on open.spotify.com, which only
// redirects to a web page; the image itself is served by the image host under the same id.
class SpotifyImages
{
public:
    static constexpr const char* imageBase = "https://i.scdn.co/image/";
    // Tests point the image host at a local server; only loopback addresses are taken.
    static constexpr const char* baseVariable = "BRENLOW_SPOTIFY_IMAGE_BASE_URL";

    // The address to download for a player's artwork URL; empty unless it is an https address.
    static QUrl downloadUrl(const QString& artworkURL);
    // The image host's base: the override when it is a loopback address, else imageBase.
    static QString base();
};
