#include "overview/widgets/OverviewPage.h"

#include "devices/DeviceTexts.h"
#include "focus/widgets/FocusCard.h"
#include "media/widgets/MusicPlaceholder.h"
#include "model/Model.h"
#include "settings/Preferences.h"
#include "ui/InfoCard.h"

#include <QBoxLayout>

OverviewPage::OverviewPage(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_cards(new QBoxLayout(QBoxLayout::LeftToRight)),
      m_music(new MusicPlaceholder(model)), m_focus(new FocusCard(model)), m_devices(new InfoCard),
      m_microphone(new InfoCard)
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
    m_microphone->setSymbol(QStringLiteral("mic"));
    // The mute button joins this card together with the model's hardware mute.

    connect(&model.preferences(), &Preferences::valuesChanged, this, &OverviewPage::arrange);
    for (auto signal :
         {&Model::batteryChanged, &Model::hasBatteryChanged, &Model::chargingChanged, &Model::devicesChanged,
          &Model::microphoneChanged, &Model::micMutedChanged, &Model::cameraChanged})
        connect(&model, signal, this, &OverviewPage::syncDevices);
    arrange();
    syncDevices();
}

void OverviewPage::setMusicCard(QWidget* card)
{
    m_cards->replaceWidget(m_music, card);
    m_music->deleteLater();
    m_music = card;
}

bool OverviewPage::stacked() const
{
    return m_cards->direction() == QBoxLayout::TopToBottom;
}

void OverviewPage::arrange()
{
    // "Hoch" reads "Karten untereinander"; the wider layouts keep the two cards in one row.
    const bool tall = m_model.preferences().values().layout == PanelLayout::tall;
    m_cards->setDirection(tall ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void OverviewPage::syncDevices()
{
    m_devices->setSymbol(DeviceTexts::batterySymbol(m_model.charging()));
    m_devices->setLines(DeviceTexts::powerTitle(m_model.hasBattery(), m_model.battery()),
                        DeviceTexts::powerDetail(m_model.devices(), m_model.charging()));
    m_microphone->setLines(DeviceTexts::microphoneLine(m_model.micMuted(), m_model.microphone()),
                           DeviceTexts::cameraLine(m_model.camera()));
    m_microphone->setToolTip(DeviceTexts::microphoneHint(m_model.microphone()));
}
