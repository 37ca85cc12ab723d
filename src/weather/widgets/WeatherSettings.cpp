#include "weather/widgets/WeatherSettings.h"

#include "model/PanelState.h"
#include "ui/Divider.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

WeatherSettings::WeatherSettings(WeatherStore& weather, PanelState& panel, QWidget* parent)
    : QWidget(parent), m_weather(weather),
      m_detail((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping()),
      m_setup(new QPushButton(PanelTheme::buttonText(WeatherTexts::settingsButton()))),
      m_off(new QPushButton(WeatherTexts::switchOff()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new Divider);
    column->addWidget(new TextLabel(WeatherTexts::settingsTitle(), 13, TextLabel::primary, QFont::Medium));
    column->addWidget(m_detail);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    for (QPushButton* button : {m_setup, m_off}) {
        button->setCursor(Qt::PointingHandCursor);
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    column->addLayout(buttons);

    connect(m_setup, &QPushButton::clicked, &panel, [&panel] { panel.setPage(Page::weather); });
    connect(m_off, &QPushButton::clicked, &weather, &WeatherStore::disable);
    connect(&weather, &WeatherStore::placeChanged, this, &WeatherSettings::sync);
    connect(&weather, &WeatherStore::automaticChanged, this, &WeatherSettings::sync);
    sync();
}

void WeatherSettings::sync()
{
    m_detail->setText(WeatherTexts::settingsDetail(m_weather.place()));
    m_off->setEnabled(m_weather.place().has_value() || m_weather.automatic());
}
