#pragma once

#include "setup/OnboardingTexts.h"

#include <QWidget>

class QPushButton;

// The body of one tour step, built from its texts: symbol, permission states, paragraphs, the
// step's buttons, the refresh row and the tips.
class OnboardingStepView : public QWidget
{
    Q_OBJECT
public:
    explicit OnboardingStepView(const OnboardingTexts::Content& content, QWidget* parent = nullptr);

    // The button with this text, or nullptr.
    QPushButton* button(const QString& text) const;
    // "Wird geprüft …" while a check runs, else "Status erneut prüfen".
    void setChecking(bool checking);

Q_SIGNALS:
    void actionTriggered(OnboardingTexts::Action action);
    void recheckRequested();
    void restartRequested();

private:
    QWidget* refreshRow(bool restartNote);

    QPushButton* m_recheck = nullptr;
};
