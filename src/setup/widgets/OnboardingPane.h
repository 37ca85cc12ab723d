#pragma once

#include <QWidget>

class OnboardingState;
class PermissionStore;
class Preferences;
class QLabel;
class QPushButton;
class QScrollArea;
class StepCapsules;

// The six-step tour: where it stands, the step's texts and the way forward, back or out.
class OnboardingPane : public QWidget
{
    Q_OBJECT
public:
    OnboardingPane(OnboardingState& onboarding, const PermissionStore& permissions,
                   const Preferences& preferences, QWidget* parent = nullptr);

    QString titleText() const;
    QString subtitleText() const;
    QString badgeText() const;
    bool showsBadge() const;
    StepCapsules* capsules() const { return m_capsules; }
    QPushButton* primaryButton() const { return m_primary; }
    QPushButton* backButton() const { return m_back; }
    QPushButton* laterButton() const { return m_later; }
    QWidget* stepView() const;

Q_SIGNALS:
    // "Später einrichten", or the last step's primary button.
    void finishRequested();
    // The page came into view: permissions may have changed while the panel was away.
    void shown();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void sync();

    OnboardingState& m_onboarding;
    const PermissionStore& m_permissions;
    const Preferences& m_preferences;
    QWidget* m_header;
    StepCapsules* m_capsules;
    QLabel* m_title;
    QLabel* m_subtitle;
    QLabel* m_badge;
    QScrollArea* m_scroll;
    QPushButton* m_later;
    QPushButton* m_back;
    QPushButton* m_primary;
};
