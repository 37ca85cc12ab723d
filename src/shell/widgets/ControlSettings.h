#pragma once

#include <QWidget>

class DelayRow;
class PanelState;
class Preferences;
class QComboBox;
class QLabel;
class ToggleRow;

// Settings section "Bedienung": hover, its delays, the Command overlay and the history shortcut.
class ControlSettings : public QWidget
{
    Q_OBJECT
public:
    ControlSettings(Preferences& preferences, const PanelState& panel, QWidget* parent = nullptr);

    ToggleRow* hoverRow() const { return m_hover; }
    DelayRow* openDelayRow() const { return m_openDelay; }
    DelayRow* closeDelayRow() const { return m_closeDelay; }
    ToggleRow* commandsRow() const { return m_commands; }
    DelayRow* commandDelayRow() const { return m_commandDelay; }
    QComboBox* shortcutPicker() const { return m_shortcut; }
    QString shortcutStatus() const;

private:
    void sync();

    Preferences& m_preferences;
    const PanelState& m_panel;
    ToggleRow* m_hover;
    DelayRow* m_openDelay;
    DelayRow* m_closeDelay;
    ToggleRow* m_commands;
    DelayRow* m_commandDelay;
    QComboBox* m_shortcut;
    QLabel* m_status;
};
