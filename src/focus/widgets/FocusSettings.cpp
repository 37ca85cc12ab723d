#include "focus/widgets/FocusSettings.h"

#include "focus/FocusTexts.h"
#include "focus/FocusTimer.h"
#include "focus/widgets/FocusStepper.h"
#include "settings/Preferences.h"
#include "ui/ToggleRow.h"

#include <QPushButton>
#include <QVBoxLayout>

FocusSettings::FocusSettings(FocusTimer& timer, Preferences& preferences, QWidget* parent)
    : QWidget(parent), m_preferences(preferences), m_stepper(new FocusStepper),
      m_reset(new QPushButton(FocusTexts::focusReset())),
      m_sound(new ToggleRow(FocusTexts::focusSoundToggle()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_stepper);
    column->addWidget(m_reset, 0, Qt::AlignLeft);
    column->addWidget(m_sound);
    m_reset->setCursor(Qt::PointingHandCursor);

    connect(m_stepper, &FocusStepper::minutesChanged, this, [this](int minutes) {
        m_preferences.update([minutes](PreferenceValues& values) { values.focusMinutes = minutes; });
    });
    connect(m_reset, &QPushButton::clicked, this,
            [this, &timer] { timer.setDuration(m_preferences.values().focusMinutes); });
    connect(m_sound, &ToggleRow::toggled, this, [this](bool on) {
        m_preferences.update([on](PreferenceValues& values) { values.focusSound = on; });
    });
    connect(&preferences, &Preferences::valuesChanged, this, &FocusSettings::sync);
    sync();
}

void FocusSettings::sync()
{
    const PreferenceValues& values = m_preferences.values();
    m_stepper->setMinutes(values.focusMinutes);
    m_sound->setState(values.focusSound);
}
