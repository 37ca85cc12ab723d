#pragma once

#include <QWidget>

class PanelState;
class QLabel;
class QPushButton;
class SymbolLabel;
class WeatherStore;

// The place and its weather at the leading side of the header: the symbol in the accent colour,
// the place's name on one shortened line and the rounded temperature. A click opens the weather page.
class WeatherHeader : public QWidget
{
    Q_OBJECT
public:
    static constexpr int nameWidth = 120;

    WeatherHeader(const WeatherStore& weather, PanelState& panel, QWidget* parent = nullptr);

    QPushButton* button() const { return m_button; }
    SymbolLabel* symbol() const { return m_symbol; }
    QLabel* temperature() const { return m_temperature; }
    // The full name, also when the button shows it shortened.
    QString placeName() const { return m_name; }

private:
    void sync();

    const WeatherStore& m_weather;
    SymbolLabel* m_symbol;
    QPushButton* m_button;
    QLabel* m_temperature;
    QString m_name;
};
