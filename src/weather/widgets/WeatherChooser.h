#pragma once

#include <QWidget>

class QLineEdit;
class QListView;
class QPushButton;
class WeatherResultList;
class WeatherStore;

// Where the weather comes from: "Aktuellen Standort verwenden", or a city search whose results
// are picked with a click or Return. Shared by the weather page and the tour.
class WeatherChooser : public QWidget
{
    Q_OBJECT
public:
    explicit WeatherChooser(WeatherStore& weather, QWidget* parent = nullptr);

    QPushButton* locationButton() const { return m_useLocation; }
    QLineEdit* searchField() const { return m_field; }
    QPushButton* searchButton() const { return m_search; }
    QListView* resultView() const { return m_resultView; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitResults();
    void showSearching();

    WeatherStore& m_weather;
    WeatherResultList* m_results;
    QPushButton* m_useLocation;
    QLineEdit* m_field;
    QPushButton* m_search;
    QListView* m_resultView;
};
