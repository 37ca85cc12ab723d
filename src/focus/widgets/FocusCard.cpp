#include "focus/widgets/FocusCard.h"

#include "focus/FocusTexts.h"
#include "focus/FocusTimer.h"
#include "ui/PanelTheme.h"
#include "ui/SymbolButton.h"
#include "ui/SymbolLabel.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

FocusCard::FocusCard(FocusTimer& timer, QWidget* parent)
    : Card(parent), m_timer(timer), m_time(new QLabel),
      m_caption(new TextLabel(QString(), 12, TextLabel::secondary)),
      m_toggle(new SymbolButton(FocusTexts::toggleSymbol(false), FocusTexts::toggleHint(), 36)),
      m_reset(new SymbolButton(QStringLiteral("arrow.counterclockwise"), FocusTexts::resetHint(), 30))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(14, 10, 14, 12);
    column->setSpacing(2);

    auto* header = new QHBoxLayout;
    header->setSpacing(5);
    auto* symbol = new SymbolLabel(QStringLiteral("timer"), 13);
    symbol->setProperty("role", QStringLiteral("secondary"));
    header->addWidget(symbol);
    header->addWidget(new TextLabel(FocusTexts::header(), 10, TextLabel::caps));
    header->addStretch(1);
    column->addLayout(header);

    auto* body = new QHBoxLayout;
    body->setSpacing(8);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    m_time->setFont(PanelTheme::digits(34, QFont::DemiBold));
    texts->addWidget(m_time);
    texts->addWidget(m_caption);
    body->addLayout(texts, 1);
    m_toggle->setStyle(SymbolButton::filled);
    m_reset->setStyle(SymbolButton::tinted);
    body->addWidget(m_reset, 0, Qt::AlignVCenter);
    body->addWidget(m_toggle, 0, Qt::AlignVCenter);
    column->addLayout(body);
    column->addStretch(1);

    auto* chips = new QHBoxLayout;
    chips->setSpacing(5);
    for (int minutes : FocusTexts::presets()) {
        auto* chip = new QPushButton(FocusTexts::presetLabel(minutes));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setCheckable(true);
        chip->setCursor(Qt::PointingHandCursor);
        chip->setFont(PanelTheme::font(11));
        chip->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        chips->addWidget(chip);
        m_presets.append(chip);
        // The chip's look follows the duration, not the click.
        connect(chip, &QPushButton::clicked, this, [this, minutes] {
            m_timer.setDuration(minutes);
            sync();
        });
    }
    column->addSpacing(6);
    column->addLayout(chips);

    connect(m_toggle, &SymbolButton::clicked, &timer, &FocusTimer::toggleTimer);
    connect(m_reset, &SymbolButton::clicked, this, [this] { m_timer.setDuration(m_timer.duration() / 60); });
    connect(&timer, &FocusTimer::secondsChanged, this, &FocusCard::sync);
    connect(&timer, &FocusTimer::durationChanged, this, &FocusCard::sync);
    connect(&timer, &FocusTimer::timerRunningChanged, this, &FocusCard::sync);
    sync();
}

QString FocusCard::timeText() const
{
    return m_time->text();
}

QString FocusCard::caption() const
{
    return m_caption->text();
}

void FocusCard::sync()
{
    const bool running = m_timer.timerRunning();
    m_time->setText(m_timer.timeText());
    m_caption->setText(FocusTexts::caption(running));
    m_toggle->setSymbol(FocusTexts::toggleSymbol(running));
    const QList<int> presets = FocusTexts::presets();
    for (int i = 0; i < m_presets.size(); ++i)
        m_presets.at(i)->setChecked(FocusTexts::presetSelected(presets.at(i), m_timer.duration()));
}
