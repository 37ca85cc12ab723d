#pragma once

#include <QWidget>

class DelayRow;
class Model;
class QComboBox;
class QLabel;
class QVBoxLayout;
class ToggleRow;

// Settings section "Bedienung": hover, its delays, the Command overlay and the history shortcut.
class ControlSettings : public QWidget
{
    Q_OBJECT
public:
    explicit ControlSettings(Model& model, QWidget* parent = nullptr);

    ToggleRow* hoverRow() const { return m_hover; }
    DelayRow* openDelayRow() const { return m_openDelay; }
    DelayRow* closeDelayRow() const { return m_closeDelay; }
    ToggleRow* commandsRow() const { return m_commands; }
    DelayRow* commandDelayRow() const { return m_commandDelay; }
    QComboBox* shortcutPicker() const { return m_shortcut; }
    QString shortcutStatus() const;
    // The track toast and the login item join above the hover settings.
    QVBoxLayout* leadingArea() const { return m_leading; }

private:
    void sync();

    Model& m_model;
    QVBoxLayout* m_leading;
    ToggleRow* m_hover;
    DelayRow* m_openDelay;
    DelayRow* m_closeDelay;
    ToggleRow* m_commands;
    DelayRow* m_commandDelay;
    QComboBox* m_shortcut;
    QLabel* m_status;
};
