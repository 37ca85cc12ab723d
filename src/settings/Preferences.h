#pragma once

#include "settings/PreferenceValues.h"

#include <QObject>

#include <functional>

class Defaults;

// The user's panel settings: one record, written through on every change.
class Preferences : public QObject
{
    Q_OBJECT
public:
    static constexpr const char* storageKey = "preferences.v3";
    static constexpr const char* migrationKey = "hover.immediate.v1";

    // Loads, migrates the former hover delay once, and writes back.
    explicit Preferences(Defaults& defaults, QObject* parent = nullptr);

    const PreferenceValues& values() const { return m_values; }
    // Brings the numbers within the record's bounds, persists the record, then reports
    // valuesAssigned(), also when nothing changed.
    void setValues(const PreferenceValues& values);
    // Convenience for one field: copies, edits and assigns.
    void update(const std::function<void(PreferenceValues&)>& edit);

Q_SIGNALS:
    // A field differs from before.
    void valuesChanged();
    // After every assignment: the owner applies the record and resizes the panel.
    void valuesAssigned();

private:
    void store();

    Defaults& m_defaults;
    PreferenceValues m_values;
};
