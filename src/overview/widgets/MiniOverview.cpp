#include "overview/widgets/MiniOverview.h"

#include "devices/DeviceStatus.h"
#include "devices/DeviceTexts.h"
#include "focus/FocusTexts.h"
#include "focus/FocusTimer.h"
#include "media/NowPlaying.h"
#include "media/widgets/SongArtwork.h"
#include "model/PanelState.h"
#include "overview/OverviewTexts.h"
#include "productivity/Productivity.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

MiniOverview::MiniOverview(const NowPlaying& nowPlaying, FocusTimer& focus, const DeviceStatus& devices,
                           PanelState& panel, Productivity& productivity, QWidget* parent)
    : QWidget(parent), m_nowPlaying(nowPlaying), m_focus(focus), m_devices(devices),
      m_cover(new SongArtwork(nowPlaying.artwork(), 46)),
      m_song(new TextLabel(QString(), 13, TextLabel::primary, QFont::DemiBold)),
      m_status(new TextLabel(QString(), 11, TextLabel::secondary)), m_timer(new QPushButton),
      m_search(new SymbolButton(QStringLiteral("magnifyingglass"), OverviewTexts::miniSearchHint(), 32)),
      m_expand(new SymbolButton(QStringLiteral("arrow.up.left.and.arrow.down.right"),
                                OverviewTexts::miniExpandHint(), 32))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);

    row->addWidget(m_cover);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    // Read as written: the headline is a phrase, not a section label.
    texts->addWidget(new TextLabel(OverviewTexts::miniHeadline(), 11, TextLabel::secondary, QFont::DemiBold));
    texts->addWidget(m_song);
    texts->addWidget(m_status);
    for (QLabel* label : {m_song, m_status})
        label->setMinimumWidth(40);
    row->addLayout(texts, 1);

    m_timer->setFont(PanelTheme::digits(17, QFont::DemiBold));
    m_timer->setToolTip(FocusTexts::miniToggleHint());
    m_timer->setAccessibleName(FocusTexts::miniToggleHint());
    m_timer->setCursor(Qt::PointingHandCursor);
    m_timer->setMinimumHeight(32);
    row->addWidget(m_timer);
    m_search->setStyle(SymbolButton::tinted);
    m_expand->setStyle(SymbolButton::tinted);
    row->addWidget(m_search);
    row->addWidget(m_expand);

    connect(m_timer, &QPushButton::clicked, &focus, &FocusTimer::toggleTimer);
    connect(m_search, &SymbolButton::clicked, this, [&panel] { panel.setPage(Page::search); });
    connect(m_expand, &SymbolButton::clicked, this, [&panel, &productivity] {
        productivity.setMini(false);
        // Setting the page again lets the panel grow to the full overview.
        panel.setPage(Page::home);
    });
    connect(&nowPlaying, &NowPlaying::songChanged, this, &MiniOverview::sync);
    connect(&focus, &FocusTimer::secondsChanged, this, &MiniOverview::sync);
    connect(&focus, &FocusTimer::timerRunningChanged, this, &MiniOverview::sync);
    for (auto signal :
         {&DeviceStatus::batteryChanged, &DeviceStatus::hasBatteryChanged, &DeviceStatus::microphoneChanged})
        connect(&devices, signal, this, &MiniOverview::sync);
    sync();
}

QString MiniOverview::songText() const
{
    return m_song->text();
}
QString MiniOverview::statusText() const
{
    return m_status->text();
}

void MiniOverview::sync()
{
    m_song->setText(m_nowPlaying.song());
    m_status->setText(DeviceTexts::miniBattery(m_devices.hasBattery(), m_devices.battery()) +
                      QStringLiteral(" · ") + DeviceTexts::miniMicrophone(m_devices.microphone()));
    m_timer->setText(m_focus.timeText());
    m_timer->setProperty("kind", m_focus.timerRunning() ? QStringLiteral("primary") : QString());
    m_timer->style()->unpolish(m_timer);
    m_timer->style()->polish(m_timer);
}
