#pragma once

#include <QObject>
#include <QString>

class Defaults;

// What the players are playing, as the overview shows it. Until a player bridge exists the store
// holds the idle texts and the user's "connect the players" switch.
class NowPlaying : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString song READ song NOTIFY songChanged)
    Q_PROPERTY(QString artist READ artist NOTIFY artistChanged)
    Q_PROPERTY(QString mediaStatus READ mediaStatus NOTIFY mediaStatusChanged)
    Q_PROPERTY(bool mediaEnabled READ mediaEnabled WRITE setMediaEnabled NOTIFY mediaEnabledChanged)
public:
    static constexpr const char* enabledKey = "mediaEnabled";

    explicit NowPlaying(Defaults& defaults, QObject* parent = nullptr);

    const QString& song() const { return m_song; }
    const QString& artist() const { return m_artist; }
    const QString& mediaStatus() const { return m_mediaStatus; }
    bool mediaEnabled() const { return m_mediaEnabled; }
    void setMediaEnabled(bool enabled);

Q_SIGNALS:
    void songChanged();
    void artistChanged();
    void mediaStatusChanged();
    void mediaEnabledChanged();

private:
    Defaults& m_defaults;
    QString m_song = QStringLiteral("Noch keine Wiedergabe");
    QString m_artist = QStringLiteral("Apple Music & Spotify verbinden");
    QString m_mediaStatus = QStringLiteral("Music oder Spotify verbinden, um die Wiedergabe zu steuern.");
    bool m_mediaEnabled = false;
};
