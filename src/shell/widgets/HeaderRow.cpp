#include "shell/widgets/HeaderRow.h"

#include "common/Clock.h"
#include "shell/PanelClock.h"
#include "shell/widgets/PageRegistry.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>

HeaderRow::HeaderRow(Clock& clock, Scheduler& scheduler, const PageRegistry& pages, QWidget* parent)
    : QWidget(parent), m_clock(clock), m_time(new QLabel),
      m_date(new TextLabel(QString(), 11, TextLabel::secondary)), m_nextMinute(scheduler, this)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    for (QWidget* item : pages.makeHeaderItems(PageRegistry::HeaderPlace::leading))
        row->addWidget(item);
    row->addStretch(1);
    for (QWidget* item : pages.makeHeaderItems(PageRegistry::HeaderPlace::beforeClock))
        row->addWidget(item, 0, Qt::AlignVCenter);
    m_time->setFont(PanelTheme::digits(13, QFont::DemiBold));
    row->addWidget(m_time);
    m_date->setFont(PanelTheme::digits(11, QFont::Normal));
    row->addWidget(m_date);
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
    const QDateTime now = m_clock.now();
    m_time->setText(PanelClock::time(now));
    m_date->setText(PanelClock::dayMonth(now));
    m_time->setToolTip(PanelClock::fullDate(now));
    m_date->setToolTip(m_time->toolTip());
    // A little past the boundary, so a timer that fires a hair early still sees the new minute.
    m_nextMinute.schedule(PanelClock::secondsToNextMinute(now) + 0.05, [this] { tick(); });
}
