#pragma once

#include <QObject>

class Defaults;

// Where the first-run tour stands; the step survives a restart so an interrupted tour resumes.
class OnboardingState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool active READ active NOTIFY activeChanged)
    Q_PROPERTY(int step READ step NOTIFY stepChanged)
    Q_PROPERTY(bool completed READ completed NOTIFY completedChanged)
public:
    static constexpr int lastStep = 5;

    explicit OnboardingState(Defaults& defaults, QObject* parent = nullptr);

    bool active() const { return m_active; }
    int step() const { return m_step; }
    bool completed() const { return m_completed; }

    // Shows the tour; a replay starts again at step 0 and keeps `completed`.
    void begin(bool replay);
    void setStep(int step);
    void finish();

Q_SIGNALS:
    void activeChanged();
    void stepChanged();
    void completedChanged();

private:
    void setActive(bool active);
    void storeStep(int step);

    Defaults& m_defaults;
    bool m_active = false;
    int m_step = 0;
    bool m_completed = false;
};
