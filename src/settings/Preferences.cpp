#include "settings/Preferences.h"

#include "settings/Defaults.h"

#include <cmath>

namespace {
const QString storage = QString::fromLatin1(Preferences::storageKey);
const QString migration = QString::fromLatin1(Preferences::migrationKey);
// The delay that hover used to wait before opening, and how close a stored value must be.
// A decimal 0.1201 lies 1.0000000000000286e-4 away in binary, so the boundary is kept inclusive.
constexpr double formerOpenDelay = 0.12;
constexpr double migrationTolerance = 0.0001 + 1e-12;
} // namespace

Preferences::Preferences(Defaults& defaults, QObject* parent) : QObject(parent), m_defaults(defaults)
{
    if (const auto data = m_defaults.dataValue(storage)) {
        if (const auto decoded = PreferenceValues::decode(*data))
            m_values = *decoded;
        else
            m_defaults.keepUnreadable(storage, QStringLiteral("die Einstellungen des Panels"));
    } else if (m_defaults.contains(storage)) {
        m_defaults.keepUnreadable(storage, QStringLiteral("die Einstellungen des Panels"));
    }
    if (m_defaults.boolValue(migration) != true) {
        if (std::abs(m_values.openDelay - formerOpenDelay) <= migrationTolerance)
            update([](PreferenceValues& values) { values.openDelay = 0; });
        store();
        m_defaults.setBool(migration, true);
    }
}

void Preferences::setValues(const PreferenceValues& assigned)
{
    // Only what the next start can read again is kept.
    const PreferenceValues values = assigned.bounded();
    const bool different = !(values == m_values);
    m_values = values;
    store();
    if (different)
        Q_EMIT valuesChanged();
    Q_EMIT valuesAssigned();
}

void Preferences::update(const std::function<void(PreferenceValues&)>& edit)
{
    PreferenceValues values = m_values;
    edit(values);
    setValues(values);
}

void Preferences::store()
{
    m_defaults.setData(storage, m_values.encode());
}
