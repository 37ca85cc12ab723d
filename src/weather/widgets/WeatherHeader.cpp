#include "weather/widgets/WeatherHeader.h"

#include "model/PanelState.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QPushButton>

WeatherHeader::WeatherHeader(const WeatherStore& weather, PanelState& panel, QWidget* parent)
    : QWidget(parent), m_weather(weather), m_symbol(new SymbolLabel(QString(), 14)),
      m_button(new QPushButton),
      m_temperature(new TextLabel(QString(), 12, TextLabel::primary, QFont::DemiBold))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    m_symbol->setStyleSheet(QStringLiteral("color: %1;").arg(PanelTheme::accent().name()));
    row->addWidget(m_symbol);
    m_button->setProperty("kind", QStringLiteral("plain"));
    m_button->setFont(PanelTheme::font(12, QFont::Medium));
    m_button->setCursor(Qt::PointingHandCursor);
    row->addWidget(m_button);
    m_temperature->setFont(PanelTheme::digits(12, QFont::DemiBold));
    row->addWidget(m_temperature);
    connect(m_button, &QPushButton::clicked, &panel, [&panel] { panel.setPage(Page::weather); });
    connect(&weather, &WeatherStore::placeChanged, this, &WeatherHeader::sync);
    connect(&weather, &WeatherStore::weatherChanged, this, &WeatherHeader::sync);
    sync();
}

void WeatherHeader::sync()
{
    m_name = WeatherTexts::headerName(m_weather.place());
    const QString shown = QFontMetrics(m_button->font()).elidedText(m_name, Qt::ElideRight, nameWidth);
    m_button->setText(PanelTheme::buttonText(shown));
    m_button->setToolTip(m_name);
    m_button->setAccessibleName(m_name);
    const bool chosen = m_weather.place().has_value();
    m_symbol->setSymbol(chosen ? m_weather.symbol() : QStringLiteral("location"));
    m_temperature->setText(m_weather.temperature());
    m_temperature->setVisible(chosen);
}
