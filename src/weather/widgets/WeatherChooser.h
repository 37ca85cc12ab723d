#pragma once

#include <QWidget>

class QLineEdit;
class QPushButton;
class QVBoxLayout;
class WeatherStore;

// Where the weather comes from: "Aktuellen Standort verwenden", or a city search whose results
// are picked with a click. Shared by the weather page and the tour.
class WeatherChooser : public QWidget
{
    Q_OBJECT
public:
    explicit WeatherChooser(WeatherStore& weather, QWidget* parent = nullptr);

    QPushButton* locationButton() const { return m_useLocation; }
    QLineEdit* searchField() const { return m_field; }
    QPushButton* searchButton() const { return m_search; }
    // The result rows, in the store's order.
    QList<QPushButton*> resultButtons() const { return m_rows; }

private:
    void showResults();
    void showSearching();

    WeatherStore& m_weather;
    QPushButton* m_useLocation;
    QLineEdit* m_field;
    QPushButton* m_search;
    QVBoxLayout* m_results;
    QList<QPushButton*> m_rows;
};
