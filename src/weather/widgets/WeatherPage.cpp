#include "weather/widgets/WeatherPage.h"

#include "common/StatusMessage.h"
#include "platform/Location.h"
#include "ui/Card.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"
#include "weather/widgets/WeatherChooser.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

WeatherPage::WeatherPage(WeatherStore& weather, Location& location, StatusMessage& message, QWidget* parent)
    : QWidget(parent), m_weather(weather), m_location(location), m_message(message),
      m_symbol(new SymbolLabel(QString(), 34)),
      m_temperature(new TextLabel(QString(), 30, TextLabel::primary, QFont::DemiBold)),
      m_description(new TextLabel(QString(), 14, TextLabel::primary, QFont::Medium)),
      m_place(new TextLabel(QString(), 12, TextLabel::secondary)),
      m_status((new TextLabel(QString(), 12, TextLabel::secondary))->wrapping()),
      m_permission(new TextLabel(QString(), 11, TextLabel::secondary)),
      m_chooser(new WeatherChooser(weather)), m_refresh(new QPushButton(WeatherTexts::refresh())),
      m_settings(new QPushButton(WeatherTexts::openLocationSettings()))
{
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    outer->addWidget(scroll);
    auto* body = new QWidget;
    scroll->setWidget(body);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(8, 4, 8, 8);
    column->setSpacing(8);

    // The weather itself.
    auto* card = new Card;
    auto* now = new QHBoxLayout(card);
    now->setContentsMargins(14, 10, 14, 10);
    now->setSpacing(12);
    m_symbol->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::accent().name()));
    now->addWidget(m_symbol);
    m_temperature->setFont(PanelTheme::digits(30, QFont::DemiBold));
    now->addWidget(m_temperature);
    auto* words = new QVBoxLayout;
    words->setSpacing(2);
    words->addWidget(m_description);
    words->addWidget(m_place);
    now->addLayout(words, 1);
    column->addWidget(card);
    column->addWidget(m_status);

    // Where it comes from.
    column->addWidget(m_chooser);
    auto* actions = new QHBoxLayout;
    actions->setSpacing(8);
    for (QPushButton* button : {m_refresh, m_settings}) {
        button->setCursor(Qt::PointingHandCursor);
        actions->addWidget(button);
    }
    actions->addStretch(1);
    column->addLayout(actions);
    column->addWidget(m_permission);
    column->addWidget((new TextLabel(WeatherTexts::privacyNote(), 11, TextLabel::secondary))->wrapping());
    column->addWidget((new TextLabel(WeatherTexts::attribution(), 10, TextLabel::secondary))->wrapping());
    column->addStretch(1);

    connect(m_refresh, &QPushButton::clicked, &weather, &WeatherStore::refresh);
    connect(m_settings, &QPushButton::clicked, this, &WeatherPage::openSettings);
    connect(&weather, &WeatherStore::weatherChanged, this, &WeatherPage::syncWeather);
    connect(&weather, &WeatherStore::placeChanged, this, &WeatherPage::syncWeather);
    connect(&weather, &WeatherStore::statusChanged, this, &WeatherPage::syncStatus);
    connect(&weather, &WeatherStore::authorizationChanged, this, &WeatherPage::syncStatus);
    connect(&weather, &WeatherStore::busyChanged, this, &WeatherPage::syncStatus);
    syncWeather();
    syncStatus();
}

void WeatherPage::syncWeather()
{
    m_symbol->setSymbol(m_weather.symbol());
    m_temperature->setText(m_weather.temperature());
    m_description->setText(m_weather.current() ? m_weather.description() : QString());
    QString where = WeatherTexts::headerName(m_weather.place());
    if (const auto& when = m_weather.updatedAt())
        where += QStringLiteral(" · ") + WeatherTexts::updatedAt(*when);
    m_place->setText(where);
}

void WeatherPage::syncStatus()
{
    m_status->setText(m_weather.status());
    m_permission->setText(WeatherTexts::permissionLine(m_weather.authorization()));
    m_refresh->setEnabled(!m_weather.busy());
}

void WeatherPage::openSettings()
{
    if (!m_location.openSettings())
        m_message.setText(WeatherTexts::locationSettingsUnavailable());
}
