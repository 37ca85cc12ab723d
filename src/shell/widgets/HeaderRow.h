#pragma once

#include "common/Scheduler.h"

#include <QWidget>

class MicrophoneDot;
class Model;
class QLabel;
class QPushButton;

// The top row of the open panel: the weather header, the microphone dot and the clock.
class HeaderRow : public QWidget
{
    Q_OBJECT
public:
    explicit HeaderRow(Model& model, QWidget* parent = nullptr);

    QString timeText() const;
    QString dateText() const;
    QString fullDateText() const;
    MicrophoneDot* microphoneDot() const { return m_dot; }
    QPushButton* weatherButton() const { return m_weather; }

private:
    // Redraws the clock and waits for the next minute boundary.
    void tick();

    Model& m_model;
    QPushButton* m_weather;
    MicrophoneDot* m_dot;
    QLabel* m_time;
    QLabel* m_date;
    ScheduledWork m_nextMinute;
};
