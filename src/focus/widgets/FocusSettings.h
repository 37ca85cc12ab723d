#pragma once

#include <QWidget>

class FocusStepper;
class FocusTimer;
class Preferences;
class QPushButton;
class ToggleRow;

// The focus timer's settings ("Fokus & Daten"): the default length, a reset to it, the sound.
class FocusSettings : public QWidget
{
    Q_OBJECT
public:
    FocusSettings(FocusTimer& timer, Preferences& preferences, QWidget* parent = nullptr);

    FocusStepper* stepper() const { return m_stepper; }
    QPushButton* resetButton() const { return m_reset; }
    ToggleRow* soundRow() const { return m_sound; }

private:
    void sync();

    Preferences& m_preferences;
    FocusStepper* m_stepper;
    QPushButton* m_reset;
    ToggleRow* m_sound;
};
