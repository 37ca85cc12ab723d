#include "focus/widgets/FocusDataSettings.h"

#include "focus/widgets/FocusStepper.h"
#include "model/Model.h"
#include "settings/Preferences.h"
#include "shell/SettingsTexts.h"
#include "ui/Divider.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QPushButton>
#include <QVBoxLayout>

FocusDataSettings::FocusDataSettings(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_stepper(new FocusStepper),
      m_reset(new QPushButton(SettingsTexts::focusReset())),
      m_sound(new ToggleRow(SettingsTexts::focusSoundToggle())),
      m_recording(new ToggleRow(SettingsTexts::recordingToggle())),
      m_clear(new QPushButton(SettingsTexts::clearHistory()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_stepper);
    column->addWidget(m_reset, 0, Qt::AlignLeft);
    column->addWidget(m_sound);
    column->addWidget(new Divider);
    column->addWidget(m_recording);
    column->addWidget((new TextLabel(SettingsTexts::historyNote(), 11, TextLabel::secondary))->wrapping());
    column->addWidget(m_clear, 0, Qt::AlignLeft);
    column->addStretch(1);
    for (QPushButton* button : {m_reset, m_clear})
        button->setCursor(Qt::PointingHandCursor);

    connect(m_stepper, &FocusStepper::minutesChanged, this, [this](int minutes) {
        m_model.preferences().update([minutes](PreferenceValues& values) { values.focusMinutes = minutes; });
    });
    connect(m_reset, &QPushButton::clicked, this,
            [this] { m_model.setDuration(m_model.preferences().values().focusMinutes); });
    connect(m_sound, &ToggleRow::toggled, this, [this](bool on) {
        m_model.preferences().update([on](PreferenceValues& values) { values.focusSound = on; });
    });
    connect(m_recording, &ToggleRow::toggled, this, [this](bool on) { m_model.setRecording(on); });
    connect(m_clear, &QPushButton::clicked, this, [this] { m_model.clearHistory(); });
    connect(&model.preferences(), &Preferences::valuesChanged, this, &FocusDataSettings::sync);
    connect(&model, &Model::recordingChanged, this, &FocusDataSettings::sync);
    sync();
}

void FocusDataSettings::sync()
{
    const PreferenceValues& values = m_model.preferences().values();
    m_stepper->setMinutes(values.focusMinutes);
    m_sound->setState(values.focusSound);
    m_recording->setState(m_model.recording());
}
