#include "shell/widgets/HeaderRow.h"

#include "common/Clock.h"
#include "devices/widgets/MicrophoneDot.h"
#include "model/Model.h"
#include "overview/OverviewTexts.h"
#include "shell/PanelClock.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>

HeaderRow::HeaderRow(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_weather(new QPushButton), m_dot(new MicrophoneDot),
      m_time(new QLabel), m_date(new TextLabel(QString(), 11, TextLabel::secondary)),
      m_nextMinute(model.platform().scheduler, this)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);

    auto* place = new SymbolLabel(QStringLiteral("location"), 13);
    place->setProperty("role", QStringLiteral("secondary"));
    row->addWidget(place);
    m_weather->setText(PanelTheme::buttonText(OverviewTexts::weatherHeader()));
    m_weather->setProperty("kind", QStringLiteral("plain"));
    m_weather->setFont(PanelTheme::font(12, QFont::Medium));
    m_weather->setCursor(Qt::PointingHandCursor);
    row->addWidget(m_weather);
    row->addStretch(1);
    row->addWidget(m_dot, 0, Qt::AlignVCenter);
    m_time->setFont(PanelTheme::digits(13, QFont::DemiBold));
    row->addWidget(m_time);
    m_date->setFont(PanelTheme::digits(11, QFont::Normal));
    row->addWidget(m_date);

    connect(m_weather, &QPushButton::clicked, this, [this] { m_model.setPage(Page::weather); });
    connect(&model, &Model::microphoneChanged, this, [this] { m_dot->setActive(m_model.microphone()); });
    m_dot->setActive(model.microphone());
    tick();
}

QString HeaderRow::timeText() const
{
    return m_time->text();
}
QString HeaderRow::dateText() const
{
    return m_date->text();
}
QString HeaderRow::fullDateText() const
{
    return m_time->toolTip();
}

void HeaderRow::tick()
{
    const QDateTime now = m_model.platform().clock.now();
    m_time->setText(PanelClock::time(now));
    m_date->setText(PanelClock::dayMonth(now));
    m_time->setToolTip(PanelClock::fullDate(now));
    m_date->setToolTip(m_time->toolTip());
    // A little past the boundary, so a timer that fires a hair early still sees the new minute.
    m_nextMinute.schedule(PanelClock::secondsToNextMinute(now) + 0.05, [this] { tick(); });
}
