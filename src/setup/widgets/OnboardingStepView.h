#pragma once

#include "setup/OnboardingTexts.h"

#include <QWidget>

// The body of one tour step, built from its texts: symbol, permission state, paragraphs, tips.
class OnboardingStepView : public QWidget
{
    Q_OBJECT
public:
    explicit OnboardingStepView(const OnboardingTexts::Content& content, QWidget* parent = nullptr);
};
