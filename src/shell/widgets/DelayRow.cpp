#include "shell/widgets/DelayRow.h"

#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QSlider>

DelayRow::DelayRow(const QString& label, SettingsTexts::DelayRange range, QWidget* parent)
    : QWidget(parent), m_slider(new QSlider(Qt::Horizontal)),
      m_value(new TextLabel(QString(), 12, TextLabel::secondary))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 2);
    row->setSpacing(12);
    auto* name = new TextLabel(label, 13);
    name->setMinimumWidth(110);
    row->addWidget(name);
    row->addWidget(m_slider, 1);
    m_value->setFont(PanelTheme::digits(12));
    m_value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_value->setMinimumWidth(m_value->fontMetrics().horizontalAdvance(QStringLiteral("0.00 s")) + 4);
    row->addWidget(m_value);

    m_slider->setRange(SettingsTexts::delayToSlider(range.lowest),
                       SettingsTexts::delayToSlider(range.highest));
    m_slider->setSingleStep(1);
    m_slider->setPageStep(10);
    m_slider->setAccessibleName(label);
    m_slider->setCursor(Qt::PointingHandCursor);
    connect(m_slider, &QSlider::valueChanged, this, [this](int position) {
        const double seconds = SettingsTexts::sliderToDelay(position);
        m_value->setText(SettingsTexts::delayText(seconds));
        Q_EMIT secondsChanged(seconds);
    });
}

void DelayRow::setSeconds(double seconds)
{
    const QSignalBlocker blocker(m_slider);
    m_slider->setValue(SettingsTexts::delayToSlider(seconds));
    // The record is not clamped: a stored value beyond the range keeps its text while the slider
    // rests at the end.
    m_value->setText(SettingsTexts::delayText(seconds));
}

QString DelayRow::valueText() const
{
    return m_value->text();
}
