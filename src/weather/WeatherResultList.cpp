#include "weather/WeatherResultList.h"

#include "weather/WeatherStore.h"
#include "weather/WeatherTexts.h"

WeatherResultList::WeatherResultList(WeatherStore& weather, QObject* parent)
    : QAbstractListModel(parent), m_weather(weather), m_places(weather.results())
{
    connect(&weather, &WeatherStore::resultsChanged, this, [this] {
        beginResetModel();
        m_places = m_weather.results();
        endResetModel();
    });
}

int WeatherResultList::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_places.size());
}

QVariant WeatherResultList::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const WeatherPlace& place = m_places.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return WeatherTexts::resultLine(place);
    case NameRole:
        return place.name;
    case CountryRole:
        return place.country.value_or(QString());
    case RegionRole:
        return place.admin1.value_or(QString());
    default:
        return {};
    }
}

QHash<int, QByteArray> WeatherResultList::roleNames() const
{
    return {{Qt::DisplayRole, "line"}, {NameRole, "name"}, {CountryRole, "country"}, {RegionRole, "region"}};
}

bool WeatherResultList::select(int row)
{
    if (row < 0 || row >= m_places.size())
        return false;
    // A copy: selecting clears the store's results, and with them this list.
    const WeatherPlace place = m_places.at(row);
    m_weather.select(place);
    return true;
}
