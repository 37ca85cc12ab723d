#pragma once

#include <QWidget>

class Location;
class QLabel;
class QPushButton;
class StatusMessage;
class SymbolLabel;
class WeatherChooser;
class WeatherStore;

// The weather page: the current weather of the chosen place, the choice of place, refreshing,
// the way to the desktop's location settings, the permission state, the privacy note and the
// data's attribution.
class WeatherPage : public QWidget
{
    Q_OBJECT
public:
    WeatherPage(WeatherStore& weather, Location& location, StatusMessage& message, QWidget* parent = nullptr);

    WeatherChooser* chooser() const { return m_chooser; }
    QLabel* temperature() const { return m_temperature; }
    QLabel* description() const { return m_description; }
    QLabel* placeLine() const { return m_place; }
    QLabel* statusLine() const { return m_status; }
    QLabel* permissionLine() const { return m_permission; }
    QPushButton* refreshButton() const { return m_refresh; }
    QPushButton* settingsButton() const { return m_settings; }

private:
    void syncWeather();
    void syncStatus();
    void openSettings();

    WeatherStore& m_weather;
    Location& m_location;
    StatusMessage& m_message;
    SymbolLabel* m_symbol;
    QLabel* m_temperature;
    QLabel* m_description;
    QLabel* m_place;
    QLabel* m_status;
    QLabel* m_permission;
    WeatherChooser* m_chooser;
    QPushButton* m_refresh;
    QPushButton* m_settings;
};
