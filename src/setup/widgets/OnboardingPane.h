#pragma once

#include "setup/OnboardingTexts.h"

#include <QWidget>

#include <functional>

class OnboardingState;
class OnboardingStepView;
class PermissionStore;
class Preferences;
class QLabel;
class QPushButton;
class QScrollArea;
class StatusMessage;
class StepCapsules;

// The six-step tour: where it stands, the step's texts, its buttons and the way forward, back or
// out. The tour has no status line of its own, so the panel's message shows above the buttons.
class OnboardingPane : public QWidget
{
    Q_OBJECT
public:
    static constexpr int weatherStep = 3;

    OnboardingPane(OnboardingState& onboarding, const PermissionStore& permissions,
                   const Preferences& preferences, const StatusMessage& message, QWidget* parent = nullptr);

    QString titleText() const;
    QString subtitleText() const;
    QString badgeText() const;
    bool showsBadge() const;
    StepCapsules* capsules() const { return m_capsules; }
    QPushButton* primaryButton() const { return m_primary; }
    QPushButton* backButton() const { return m_back; }
    QPushButton* laterButton() const { return m_later; }
    OnboardingStepView* stepView() const;
    QString messageText() const;
    // The weather step's choice of place (location or city), made anew with each view of the step.
    void setWeatherChooser(std::function<QWidget*()> make);

Q_SIGNALS:
    // "Später einrichten", or the last step's primary button.
    void finishRequested();
    // The page came into view: permissions may have changed while the panel was away.
    void shown();
    // The steps' buttons.
    void accessibilityRequested();
    void revealAppRequested();
    void settingsRequested(const QString& anchor);
    void screenCaptureRequested();
    void recheckRequested();
    void restartRequested();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();
    void showChecking();
    void showMessage();
    void run(OnboardingTexts::Action action);

    OnboardingState& m_onboarding;
    const PermissionStore& m_permissions;
    const Preferences& m_preferences;
    const StatusMessage& m_message;
    QWidget* m_header;
    StepCapsules* m_capsules;
    QLabel* m_title;
    QLabel* m_subtitle;
    QLabel* m_badge;
    QScrollArea* m_scroll;
    QPushButton* m_later;
    QPushButton* m_back;
    QPushButton* m_primary;
    QLabel* m_messageLine;
    int m_shownStep = -1;
    std::function<QWidget*()> m_weatherChooser;
};
