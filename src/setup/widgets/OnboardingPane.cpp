#include "setup/widgets/OnboardingPane.h"

#include "common/StatusMessage.h"
#include "settings/Preferences.h"
#include "setup/OnboardingState.h"
#include "setup/OnboardingTexts.h"
#include "setup/PermissionStore.h"
#include "setup/widgets/OnboardingStepView.h"
#include "setup/widgets/StepCapsules.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

OnboardingPane::OnboardingPane(OnboardingState& onboarding, const PermissionStore& permissions,
                               const Preferences& preferences, const StatusMessage& message, QWidget* parent)
    : QWidget(parent), m_onboarding(onboarding), m_permissions(permissions), m_preferences(preferences),
      m_message(message), m_header(new QWidget), m_capsules(new StepCapsules(OnboardingTexts::stepCount)),
      m_title(new TextLabel(QString(), 22, TextLabel::primary, QFont::Bold)),
      m_subtitle((new TextLabel(QString(), 13, TextLabel::secondary))->wrapping()),
      m_badge(new TextLabel(QString(), 10, TextLabel::primary, QFont::DemiBold)), m_scroll(new QScrollArea),
      m_later(new QPushButton(OnboardingTexts::later())), m_back(new QPushButton(OnboardingTexts::back())),
      m_primary(new QPushButton), m_messageLine((new TextLabel(QString(), 12))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 0);
    column->setSpacing(6);

    auto* header = new QHBoxLayout(m_header);
    header->setContentsMargins(0, 0, 0, 0);
    header->addWidget(new TextLabel(OnboardingTexts::brand(), 10, TextLabel::caps));
    header->addStretch(1);
    header->addWidget(m_capsules, 0, Qt::AlignVCenter);
    column->addWidget(m_header);
    column->addSpacing(4);
    column->addWidget(m_title);
    column->addWidget(m_subtitle);
    m_badge->setStyleSheet(QStringLiteral("color: %1; background: rgba(124,156,255,0.16); border-radius: 8px;"
                                          "padding: 2px 8px;")
                               .arg(PanelTheme::accent().name()));
    column->addWidget(m_badge, 0, Qt::AlignLeft);
    column->addSpacing(4);

    m_scroll->setWidgetResizable(true);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    column->addWidget(m_scroll, 1);
    m_messageLine->setObjectName(QStringLiteral("tourMessage"));
    column->addWidget(m_messageLine);

    auto* navigation = new QHBoxLayout;
    navigation->setSpacing(8);
    m_later->setProperty("kind", QStringLiteral("plain"));
    m_primary->setProperty("kind", QStringLiteral("primary"));
    for (QPushButton* button : {m_later, m_back, m_primary}) {
        button->setCursor(Qt::PointingHandCursor);
        button->setFont(PanelTheme::font(13, button == m_primary ? QFont::DemiBold : QFont::Normal));
        button->setMinimumHeight(30);
    }
    m_primary->setMinimumWidth(130);
    m_primary->setDefault(true);
    navigation->addWidget(m_later);
    navigation->addStretch(1);
    navigation->addWidget(m_back);
    navigation->addWidget(m_primary);
    column->addLayout(navigation);

    connect(m_primary, &QPushButton::clicked, this, [this] {
        const int step = m_onboarding.step();
        if (OnboardingTexts::primaryFinishes(step))
            Q_EMIT finishRequested();
        else
            m_onboarding.setStep(step + 1);
    });
    connect(m_back, &QPushButton::clicked, this, [this] { m_onboarding.setStep(m_onboarding.step() - 1); });
    connect(m_later, &QPushButton::clicked, this, &OnboardingPane::finishRequested);
    connect(&onboarding, &OnboardingState::stepChanged, this, &OnboardingPane::sync);
    connect(&permissions, &PermissionStore::accessibilityChanged, this, &OnboardingPane::sync);
    connect(&permissions, &PermissionStore::screenCaptureChanged, this, &OnboardingPane::sync);
    connect(&permissions, &PermissionStore::automationChanged, this, &OnboardingPane::sync);
    connect(&permissions, &PermissionStore::checkingChanged, this, &OnboardingPane::showChecking);
    connect(&preferences, &Preferences::valuesChanged, this, &OnboardingPane::sync);
    connect(&message, &StatusMessage::textChanged, this, &OnboardingPane::showMessage);
    sync();
    showMessage();
}

QString OnboardingPane::titleText() const
{
    return m_title->text();
}
QString OnboardingPane::subtitleText() const
{
    return m_subtitle->text();
}
QString OnboardingPane::badgeText() const
{
    return m_badge->text();
}
bool OnboardingPane::showsBadge() const
{
    return !m_badge->isHidden();
}
OnboardingStepView* OnboardingPane::stepView() const
{
    return qobject_cast<OnboardingStepView*>(m_scroll->widget());
}

QString OnboardingPane::messageText() const
{
    return m_messageLine->isHidden() ? QString() : m_messageLine->text();
}

void OnboardingPane::setWeatherChooser(std::function<QWidget*()> make)
{
    m_weatherChooser = std::move(make);
    if (m_onboarding.step() == weatherStep)
        sync();
}

void OnboardingPane::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    Q_EMIT shown();
}

void OnboardingPane::sync()
{
    const int step = m_onboarding.step();
    m_header->setAccessibleName(OnboardingTexts::stepDescription(step));
    m_capsules->setCurrent(step);
    m_title->setText(OnboardingTexts::title(step));
    m_subtitle->setText(OnboardingTexts::subtitle(step));
    const auto badge = OnboardingTexts::badge(step);
    m_badge->setText(badge.value_or(QString()));
    m_badge->setHidden(!badge);
    m_back->setHidden(!OnboardingTexts::hasBack(step));
    m_primary->setText(OnboardingTexts::primary(step));

    OnboardingTexts::States states;
    states.accessibility = m_permissions.accessibility();
    states.screenCapture = m_permissions.screenCapture();
    states.spotify = m_permissions.spotify();
    states.music = m_permissions.music();
    auto* view =
        new OnboardingStepView(OnboardingTexts::content(step, states, m_preferences.values().shortcut));
    connect(view, &OnboardingStepView::actionTriggered, this, &OnboardingPane::run);
    connect(view, &OnboardingStepView::recheckRequested, this, &OnboardingPane::recheckRequested);
    connect(view, &OnboardingStepView::restartRequested, this, &OnboardingPane::restartRequested);
    // Above the step view's closing stretch.
    if (auto* column = qobject_cast<QBoxLayout*>(view->layout());
        column && step == weatherStep && m_weatherChooser)
        column->insertWidget(column->count() - 1, m_weatherChooser());

    // A new state of the same step keeps the reader where they were.
    QScrollBar* bar = m_scroll->verticalScrollBar();
    const int position = step == m_shownStep ? bar->value() : 0;
    m_shownStep = step;
    // The old view may be the sender of the click that changed the state: it goes later.
    if (QWidget* old = m_scroll->takeWidget()) {
        old->hide();
        old->deleteLater();
    }
    m_scroll->setWidget(view);
    view->setChecking(m_permissions.checking());
    // The new view gets its height with the next layout pass.
    if (position > 0)
        QTimer::singleShot(0, view, [bar, position] { bar->setValue(position); });
}

void OnboardingPane::showChecking()
{
    if (OnboardingStepView* view = stepView())
        view->setChecking(m_permissions.checking());
}

void OnboardingPane::showMessage()
{
    m_messageLine->setText(m_message.text());
    m_messageLine->setHidden(m_message.text().isEmpty());
}

void OnboardingPane::run(OnboardingTexts::Action action)
{
    switch (action) {
    case OnboardingTexts::Action::openAccessibility:
        Q_EMIT accessibilityRequested();
        return;
    case OnboardingTexts::Action::revealApp:
        Q_EMIT revealAppRequested();
        return;
    case OnboardingTexts::Action::requestScreenCapture:
        Q_EMIT screenCaptureRequested();
        return;
    case OnboardingTexts::Action::openAutomation:
    case OnboardingTexts::Action::openScreenCaptureSettings:
        Q_EMIT settingsRequested(OnboardingTexts::anchor(action));
        return;
    }
}
