#include "setup/widgets/PermissionSettings.h"

#include "setup/PermissionStore.h"
#include "setup/PermissionTexts.h"
#include "ui/Divider.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace {
QPushButton* rowButton(const QString& text)
{
    auto* button = new QPushButton(PanelTheme::buttonText(text));
    button->setCursor(Qt::PointingHandCursor);
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}
} // namespace

PermissionSettings::PermissionSettings(const PermissionStore& permissions, QWidget* parent)
    : QWidget(parent), m_permissions(permissions), m_accessibility(new TextLabel({}, 12)),
      m_allow(rowButton(PermissionTexts::allowAccessibility())), m_screenCapture(new TextLabel({}, 12)),
      m_spotify(new TextLabel({}, 12)), m_music(new TextLabel({}, 12)),
      m_recheck(rowButton(PermissionTexts::recheck())), m_restartNote(new QWidget),
      m_restart(rowButton(PermissionTexts::restart()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(new Divider);
    auto* accessibilityRow = new QHBoxLayout;
    accessibilityRow->addWidget(m_accessibility, 1);
    accessibilityRow->addWidget(m_allow);
    column->addLayout(accessibilityRow);
    column->addWidget(m_screenCapture);
    column->addWidget(m_spotify);
    column->addWidget(m_music);
    column->addWidget(m_recheck, 0, Qt::AlignLeft);

    auto* note = new QVBoxLayout(m_restartNote);
    note->setContentsMargins(0, 0, 0, 0);
    note->addWidget((new TextLabel(PermissionTexts::restartNote(), 11, TextLabel::secondary))->wrapping());
    note->addWidget(m_restart, 0, Qt::AlignLeft);
    m_restart->setToolTip(PermissionTexts::restartHelp());
    column->addWidget(m_restartNote);

    connect(m_allow, &QPushButton::clicked, this, &PermissionSettings::accessibilityRequested);
    connect(m_recheck, &QPushButton::clicked, this, &PermissionSettings::recheckRequested);
    connect(m_restart, &QPushButton::clicked, this, &PermissionSettings::restartRequested);
    for (auto signal : {&PermissionStore::accessibilityChanged, &PermissionStore::screenCaptureChanged,
                        &PermissionStore::automationChanged, &PermissionStore::checkingChanged})
        connect(&permissions, signal, this, &PermissionSettings::sync);
    sync();
}

void PermissionSettings::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    Q_EMIT recheckRequested();
}

void PermissionSettings::sync()
{
    const bool trusted = m_permissions.accessibility();
    m_accessibility->setText(trusted ? PermissionTexts::accessibilityGranted()
                                     : PermissionTexts::accessibilityMissing());
    m_allow->setVisible(!trusted);
    m_restartNote->setVisible(!trusted);
    m_screenCapture->setText(m_permissions.screenCapture() ? PermissionTexts::screenCaptureGranted()
                                                           : PermissionTexts::screenCaptureMissing());
    m_spotify->setText(PermissionTexts::spotifyTitle() + QStringLiteral(": ") +
                       PermissionTexts::automationText(m_permissions.spotify()));
    m_music->setText(PermissionTexts::musicTitle() + QStringLiteral(": ") +
                     PermissionTexts::automationText(m_permissions.music()));
    m_recheck->setText(PanelTheme::buttonText(m_permissions.checking() ? PermissionTexts::checking()
                                                                       : PermissionTexts::recheck()));
    m_recheck->setEnabled(!m_permissions.checking());
}

QString PermissionSettings::accessibilityText() const
{
    return m_accessibility->text();
}
QString PermissionSettings::screenCaptureText() const
{
    return m_screenCapture->text();
}
QString PermissionSettings::spotifyText() const
{
    return m_spotify->text();
}
QString PermissionSettings::musicText() const
{
    return m_music->text();
}
