#include "weather/widgets/WeatherChooser.h"

#include "ui/PanelTheme.h"
#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

WeatherChooser::WeatherChooser(WeatherStore& weather, QWidget* parent)
    : QWidget(parent), m_weather(weather),
      m_useLocation(new QPushButton(PanelTheme::buttonText(WeatherTexts::useLocation()))),
      m_field(new QLineEdit), m_search(new QPushButton(WeatherTexts::searchButton())),
      m_results(new QVBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    m_useLocation->setCursor(Qt::PointingHandCursor);
    column->addWidget(m_useLocation, 0, Qt::AlignLeft);

    auto* searchRow = new QHBoxLayout;
    searchRow->setSpacing(6);
    m_field->setPlaceholderText(WeatherTexts::searchPlaceholder());
    m_field->setClearButtonEnabled(true);
    m_field->setText(weather.searchText());
    searchRow->addWidget(m_field, 1);
    m_search->setCursor(Qt::PointingHandCursor);
    searchRow->addWidget(m_search);
    column->addLayout(searchRow);
    m_results->setSpacing(2);
    column->addLayout(m_results);

    connect(m_useLocation, &QPushButton::clicked, &weather, &WeatherStore::useCurrentLocation);
    connect(m_field, &QLineEdit::textEdited, &weather, &WeatherStore::setSearchText);
    connect(m_field, &QLineEdit::returnPressed, &weather, &WeatherStore::search);
    connect(m_search, &QPushButton::clicked, &weather, &WeatherStore::search);
    connect(&weather, &WeatherStore::searchTextChanged, this, [this] {
        if (m_field->text() != m_weather.searchText())
            m_field->setText(m_weather.searchText());
    });
    connect(&weather, &WeatherStore::resultsChanged, this, &WeatherChooser::showResults);
    connect(&weather, &WeatherStore::searchingChanged, this, &WeatherChooser::showSearching);
    showResults();
    showSearching();
}

void WeatherChooser::showResults()
{
    for (QPushButton* row : std::exchange(m_rows, {})) {
        // The clicked row may be the sender: it goes once its click is over.
        row->hide();
        row->deleteLater();
    }
    for (const WeatherPlace& place : m_weather.results()) {
        auto* row = new QPushButton(PanelTheme::buttonText(WeatherTexts::resultLine(place)));
        row->setProperty("kind", QStringLiteral("plain"));
        row->setCursor(Qt::PointingHandCursor);
        row->setStyleSheet(QStringLiteral("text-align: left;"));
        connect(row, &QPushButton::clicked, &m_weather, [this, place] { m_weather.select(place); });
        m_results->addWidget(row);
        m_rows.append(row);
    }
}

void WeatherChooser::showSearching()
{
    m_search->setEnabled(!m_weather.searching());
}
