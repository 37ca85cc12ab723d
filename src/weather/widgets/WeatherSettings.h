#pragma once

#include <QWidget>

class PanelState;
class QLabel;
class QPushButton;
class WeatherStore;

// The weather's piece of "Verbindungen": where it stands, the way to the weather page and the
// switch that forgets the place and the cached forecast.
class WeatherSettings : public QWidget
{
    Q_OBJECT
public:
    WeatherSettings(WeatherStore& weather, PanelState& panel, QWidget* parent = nullptr);

    QPushButton* setupButton() const { return m_setup; }
    QPushButton* offButton() const { return m_off; }
    QLabel* detail() const { return m_detail; }

private:
    void sync();

    WeatherStore& m_weather;
    QLabel* m_detail;
    QPushButton* m_setup;
    QPushButton* m_off;
};
