#pragma once

#include <QWidget>

class FocusStepper;
class Model;
class QPushButton;
class ToggleRow;

// Settings section "Fokus & Daten": the default focus length and the clipboard history.
class FocusDataSettings : public QWidget
{
    Q_OBJECT
public:
    explicit FocusDataSettings(Model& model, QWidget* parent = nullptr);

    FocusStepper* stepper() const { return m_stepper; }
    QPushButton* resetButton() const { return m_reset; }
    ToggleRow* soundRow() const { return m_sound; }
    ToggleRow* recordingRow() const { return m_recording; }
    QPushButton* clearButton() const { return m_clear; }

private:
    void sync();

    Model& m_model;
    FocusStepper* m_stepper;
    QPushButton* m_reset;
    ToggleRow* m_sound;
    ToggleRow* m_recording;
    QPushButton* m_clear;
};
