#include "focus/widgets/FocusStepper.h"

#include "focus/FocusTexts.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>

FocusStepper::FocusStepper(QWidget* parent)
    : QWidget(parent), m_label(new TextLabel(QString(), 13)),
      m_decrease(new QPushButton(QStringLiteral("−"))), m_increase(new QPushButton(QStringLiteral("+")))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 2);
    row->setSpacing(6);
    row->addWidget(m_label, 1);
    for (QPushButton* button : {m_decrease, m_increase}) {
        button->setFixedSize(30, 24);
        button->setCursor(Qt::PointingHandCursor);
        row->addWidget(button);
    }
    // The buttons name the direction; the label already names the value.
    m_decrease->setAccessibleName(QStringLiteral("−"));
    m_increase->setAccessibleName(QStringLiteral("+"));
    connect(m_decrease, &QPushButton::clicked, this, [this] { step(-1); });
    connect(m_increase, &QPushButton::clicked, this, [this] { step(+1); });
}

void FocusStepper::setMinutes(int minutes)
{
    m_minutes = minutes;
    m_label->setText(FocusTexts::focusStepper(minutes));
    m_decrease->setEnabled(minutes > FocusTexts::focusMinutesLowest);
    m_increase->setEnabled(minutes < FocusTexts::focusMinutesHighest);
}

QString FocusStepper::text() const
{
    return m_label->text();
}

void FocusStepper::step(int delta)
{
    const int next = FocusTexts::stepFocusMinutes(m_minutes, delta);
    if (next == m_minutes)
        return;
    setMinutes(next);
    Q_EMIT minutesChanged(next);
}
