#include "media/widgets/MusicPlaceholder.h"

#include "model/Model.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

MusicPlaceholder::MusicPlaceholder(Model& model, QWidget* parent)
    : Card(parent), m_model(model), m_song(new TextLabel(QString(), 15, TextLabel::primary, QFont::DemiBold)),
      m_artist(new TextLabel(QString(), 12, TextLabel::secondary)),
      m_status((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 12, 14, 12);
    column->setSpacing(8);
    auto* row = new QHBoxLayout;
    row->setSpacing(12);
    auto* cover = new SymbolLabel(QStringLiteral("music.note"), 26);
    cover->setFixedSize(56, 56);
    cover->setProperty("role", QStringLiteral("secondary"));
    cover->setStyleSheet(QStringLiteral("background: rgba(255,255,255,0.08); border-radius: 10px;"));
    row->addWidget(cover);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addStretch(1);
    texts->addWidget(m_song);
    texts->addWidget(m_artist);
    texts->addStretch(1);
    row->addLayout(texts, 1);
    column->addLayout(row);
    column->addWidget(m_status);
    column->addStretch(1);
    for (QLabel* label : {m_song, m_artist})
        label->setMinimumWidth(60);

    connect(&model, &Model::songChanged, this, &MusicPlaceholder::sync);
    connect(&model, &Model::artistChanged, this, &MusicPlaceholder::sync);
    connect(&model, &Model::mediaStatusChanged, this, &MusicPlaceholder::sync);
    sync();
}

void MusicPlaceholder::sync()
{
    m_song->setText(m_model.song());
    m_artist->setText(m_model.artist());
    m_status->setText(m_model.mediaStatus());
}
