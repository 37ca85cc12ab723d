#include "model/Preferences.h"

#include "model/Defaults.h"

#include <cmath>

namespace {
const QString storage = QString::fromLatin1(Preferences::storageKey);
const QString migration = QString::fromLatin1(Preferences::migrationKey);
// The delay that hover used to wait before opening.
constexpr double formerOpenDelay = 0.12;
} // namespace

Preferences::Preferences(Defaults& defaults, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
{
    if (const auto data = m_defaults.dataValue(storage)) {
        if (const auto decoded = PreferenceValues::decode(*data))
            m_values = *decoded;
    }
    if (m_defaults.boolValue(migration) != true) {
        if (std::abs(m_values.openDelay - formerOpenDelay) < 0.0001)
            update([](PreferenceValues& values) { values.openDelay = 0; });
        store();
        m_defaults.setBool(migration, true);
    }
}

void Preferences::setValues(const PreferenceValues& values)
{
    const bool different = !(values == m_values);
    m_values = values;
    store();
    if (different)
        Q_EMIT valuesChanged();
    if (changed)
        changed();
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
