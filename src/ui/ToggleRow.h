#pragma once

#include <QWidget>

class QLabel;
class ToggleSwitch;

// A setting that is on or off: its label, a switch and an optional note below.
class ToggleRow : public QWidget
{
    Q_OBJECT
public:
    ToggleRow(const QString& label, const QString& note = QString(), QWidget* parent = nullptr);

    bool isChecked() const;
    // Shows a state without reporting it as a user change.
    void setState(bool checked);
    QString label() const;
    ToggleSwitch* toggleSwitch() const { return m_switch; }

Q_SIGNALS:
    void toggled(bool checked);

private:
    QLabel* m_label;
    ToggleSwitch* m_switch;
};
