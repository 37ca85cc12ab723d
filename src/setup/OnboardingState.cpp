#include "setup/OnboardingState.h"

#include "settings/Defaults.h"

#include <algorithm>

namespace {
const QString stepKey = QStringLiteral("welcome.step");
const QString completedKey = QStringLiteral("welcome.completed");
} // namespace

OnboardingState::OnboardingState(Defaults& defaults, QObject* parent)
    : QObject(parent), m_defaults(defaults),
      m_step(int(std::clamp<qint64>(defaults.integerValue(stepKey).value_or(0), 0, lastStep))),
      m_completed(defaults.boolValue(completedKey).value_or(false))
{}

void OnboardingState::begin(bool replay)
{
    if (replay)
        storeStep(0);
    setActive(true);
}

void OnboardingState::setStep(int step)
{
    storeStep(std::clamp(step, 0, lastStep));
}

void OnboardingState::finish()
{
    if (!m_completed) {
        m_completed = true;
        Q_EMIT completedChanged();
    }
    setActive(false);
    m_defaults.setBool(completedKey, true);
    storeStep(0);
}

void OnboardingState::setActive(bool active)
{
    if (m_active == active)
        return;
    m_active = active;
    Q_EMIT activeChanged();
}

void OnboardingState::storeStep(int step)
{
    m_defaults.setInteger(stepKey, step);
    if (m_step == step)
        return;
    m_step = step;
    Q_EMIT stepChanged();
}
