#pragma once

#include "weather/WeatherPlace.h"

#include <QAbstractListModel>

class WeatherStore;

// The city search's places as rows for a view, in the store's order; a new answer replaces them.
class WeatherResultList : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        CountryRole,
        RegionRole,
    };

    explicit WeatherResultList(WeatherStore& weather, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    // Takes the place of `row` as the weather's place; false for a row that is gone.
    bool select(int row);

private:
    WeatherStore& m_weather;
    // The rows announced to views; the store's list is swapped inside a reset.
    QList<WeatherPlace> m_places;
};
