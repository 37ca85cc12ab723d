#include "overview/widgets/OverviewPage.h"

#include "devices/widgets/MicrophoneCard.h"
#include "devices/widgets/PowerCard.h"
#include "focus/widgets/FocusCard.h"
#include "media/widgets/MusicCard.h"
#include "settings/Preferences.h"

#include <QBoxLayout>

OverviewPage::OverviewPage(NowPlaying& nowPlaying, FocusTimer& focus, DeviceStatus& devices,
                           const Preferences& preferences, QWidget* parent)
    : QWidget(parent), m_preferences(preferences), m_cards(new QBoxLayout(QBoxLayout::LeftToRight)),
      m_music(new MusicCard(nowPlaying)), m_focus(new FocusCard(focus)), m_devices(new PowerCard(devices)),
      m_microphone(new MicrophoneCard(devices))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    m_cards->setSpacing(8);
    m_cards->addWidget(m_music, 1);
    m_cards->addWidget(m_focus, 1);
    column->addLayout(m_cards, 1);

    auto* small = new QHBoxLayout;
    small->setSpacing(8);
    small->addWidget(m_devices, 1);
    small->addWidget(m_microphone, 1);
    column->addLayout(small);

    connect(&preferences, &Preferences::valuesChanged, this, &OverviewPage::arrange);
    arrange();
}

bool OverviewPage::stacked() const
{
    return m_cards->direction() == QBoxLayout::TopToBottom;
}

void OverviewPage::arrange()
{
    // "Hoch" reads "Karten untereinander"; the wider layouts keep the two cards in one row.
    const bool tall = m_preferences.values().layout == PanelLayout::tall;
    m_cards->setDirection(tall ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}
