#pragma once

#include "shell/SettingsTexts.h"

#include <QWidget>

class QLabel;
class QSlider;

// A delay in seconds: its label, the value as "0.50 s" and a slider over the allowed range.
class DelayRow : public QWidget
{
    Q_OBJECT
public:
    DelayRow(const QString& label, SettingsTexts::DelayRange range, QWidget* parent = nullptr);

    // Shows a value without reporting it.
    void setSeconds(double seconds);
    QString valueText() const;
    QSlider* slider() const { return m_slider; }

Q_SIGNALS:
    void secondsChanged(double seconds);

private:
    QSlider* m_slider;
    QLabel* m_value;
};
