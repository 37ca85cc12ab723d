#include "media/widgets/SongArtwork.h"

#include "media/ArtworkStore.h"
#include "media/MediaTexts.h"
#include "ui/PanelTheme.h"
#include "ui/Symbol.h"

#include <QPainter>
#include <QPainterPath>

SongArtwork::SongArtwork(const ArtworkStore& artwork, int side, QWidget* parent)
    : QWidget(parent), m_artwork(artwork)
{
    setFixedSize(side, side);
    connect(&artwork, &ArtworkStore::imageChanged, this, &SongArtwork::sync);
    sync();
}

bool SongArtwork::showsCover() const
{
    return m_artwork.hasImage();
}

void SongArtwork::sync()
{
    setAccessibleName(showsCover() ? MediaTexts::cover() : MediaTexts::noCover());
    update();
}

void SongArtwork::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF square = rect();
    QPainterPath clip;
    clip.addRoundedRect(square, width() * 0.2, width() * 0.2);
    painter.setClipPath(clip);
    const QImage& image = m_artwork.image();
    if (!image.isNull()) {
        // Fill the square: the shorter side fits, the longer one is cropped in the middle.
        const QSizeF scaled = QSizeF(image.size()).scaled(square.size(), Qt::KeepAspectRatioByExpanding);
        const QRectF target((square.width() - scaled.width()) / 2, (square.height() - scaled.height()) / 2,
                            scaled.width(), scaled.height());
        painter.drawImage(target, image);
        return;
    }
    painter.fillPath(clip, PanelTheme::raised());
    painter.setPen(PanelTheme::secondary());
    const bool glyphs = Symbol::ensureFont();
    if (const auto font = Symbol::font(int(width() * 0.5)); font && glyphs)
        painter.setFont(*font);
    painter.drawText(square, Qt::AlignCenter, Symbol::text(QStringLiteral("music.note"), glyphs));
}
