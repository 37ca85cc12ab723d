#include "weather/widgets/WeatherHeader.h"

#include "model/PanelState.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"

#include <QHBoxLayout>
#include <QPushButton>

WeatherHeader::WeatherHeader(PanelState& panel, QWidget* parent) : QWidget(parent), m_button(new QPushButton)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    auto* place = new SymbolLabel(QStringLiteral("location"), 13);
    place->setProperty("role", QStringLiteral("secondary"));
    row->addWidget(place);
    m_button->setText(PanelTheme::buttonText(QStringLiteral("Ort & Wetter")));
    m_button->setProperty("kind", QStringLiteral("plain"));
    m_button->setFont(PanelTheme::font(12, QFont::Medium));
    m_button->setCursor(Qt::PointingHandCursor);
    row->addWidget(m_button);
    connect(m_button, &QPushButton::clicked, &panel, [&panel] { panel.setPage(Page::weather); });
}
