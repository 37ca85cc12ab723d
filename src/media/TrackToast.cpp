#include "media/TrackToast.h"

#include "common/Clock.h"
#include "media/ArtworkStore.h"
#include "media/MediaTexts.h"
#include "media/NowPlaying.h"
#include "media/TrackToastSettings.h"
#include "media/WingPlacement.h"
#include "media/WingSurface.h"
#include "platform/Displays.h"
#include "platform/SessionEvents.h"
#include "settings/Preferences.h"

#include <QIcon>
#include <QPointer>

TrackToast::TrackToast(const Inputs& inputs, WingSurface& surface, QObject* parent)
    : QObject(parent), m_in(inputs), m_surface(surface), m_dismiss(inputs.scheduler, this)
{
    NowPlaying& media = inputs.media;
    connect(&media, &NowPlaying::mediaChanged, this, &TrackToast::mediaChanged);
    connect(&media.artwork(), &ArtworkStore::imageChanged, this, &TrackToast::artworkChanged);
    connect(&inputs.settings, &TrackToastSettings::enabledChanged, this, [this] {
        if (!m_in.settings.enabled())
            hide();
    });
    connect(&inputs.displays, &Displays::configurationChanged, this, &TrackToast::hide);
    connect(&inputs.session, &SessionEvents::willSleep, this, &TrackToast::hide);
}

TrackToast::~TrackToast()
{
    m_surface.orderOut();
}

void TrackToast::mediaChanged()
{
    const std::optional<MediaSnapshot>& snapshot = m_in.media.media();
    if (!snapshot) {
        if (m_visibleMusic)
            hide();
        return;
    }
    if (m_visibleMusic && (*m_visibleMusic != snapshot->identity() || !snapshot->playing))
        hide();
    const std::optional<QString> identity = m_policy.changed(snapshot);
    if (!identity || !m_in.settings.enabled())
        return;
    const ArtworkStore& artwork = m_in.media.artwork();
    show(artwork.key() == *identity ? artwork.image() : QImage(), snapshot->title, snapshot->artist);
    if (m_surface.isShown()) {
        m_visibleMusic = identity;
        m_pending = identity;
        m_song = snapshot;
        m_pendingUntil = m_in.clock.now().addMSecs(qint64(m_in.settings.duration() * 1000));
    }
}

void TrackToast::artworkChanged()
{
    display(m_in.media.artwork().image());
}

void TrackToast::display(const QImage& image)
{
    const ArtworkStore& artwork = m_in.media.artwork();
    if (image.isNull() || !m_pending || !m_song || m_visibleMusic != m_pending || !m_surface.isShown() ||
        artwork.key() != *m_pending || !(m_in.clock.now() < m_pendingUntil))
        return;
    m_surface.setWing(image, m_song->title, m_song->artist, m_displayHeight);
    m_pending.reset();
}

void TrackToast::show(const QImage& image, const QString& title, const QString& subtitle)
{
    hide();
    if (m_in.covered && m_in.covered())
        return;
    const QList<DisplayInfo> displays = m_in.displays.displays();
    const auto index = WingPlacement::chooseDisplay(displays, m_in.preferences.values().screenMain);
    if (!index)
        return;
    const auto frame = WingPlacement::wingFrame(displays[*index]);
    if (!frame)
        return;
    m_displayHeight = frame->height();
    m_surface.setWing(image, title, subtitle, m_displayHeight);
    const bool still = m_in.displays.reduceMotion();
    m_surface.slideIn(still ? *frame : WingPlacement::sliver(*frame), *frame, still ? 0 : slideInTime);
    m_dismiss.schedule(m_in.settings.duration(), [this] { retract(); });
}

void TrackToast::retract()
{
    const quint64 token = m_animationToken;
    const double seconds = m_in.displays.reduceMotion() ? 0 : slideOutTime;
    QPointer<TrackToast> self(this);
    m_surface.slideOut(WingPlacement::sliver(m_surface.frame()), seconds, [self, token] {
        if (self)
            self->retractDone(token);
    });
}

void TrackToast::retractDone(quint64 token)
{
    if (token == m_animationToken)
        hide();
}

void TrackToast::panelExpanded(bool expanded)
{
    if (expanded)
        hide();
}

void TrackToast::hide()
{
    ++m_animationToken;
    m_pending.reset();
    m_song.reset();
    m_visibleMusic.reset();
    m_dismiss.cancel();
    m_surface.orderOut();
}

void TrackToast::preview()
{
    const std::optional<MediaSnapshot>& media = m_in.media.media();
    if (!m_in.settings.enabled() || !media)
        return;
    Q_EMIT closeRequested();
    show(m_in.media.artwork().image(), media->title, media->artist);
}

void TrackToast::announceUnread(const QString& appID, const QString& name, int count)
{
    QString iconName = appID;
    if (iconName.endsWith(QLatin1String(".desktop")))
        iconName.chop(8);
    const QIcon icon = QIcon::fromTheme(iconName);
    show(icon.isNull() ? QImage() : icon.pixmap(64, 64).toImage(), name, MediaTexts::unread(count));
}
