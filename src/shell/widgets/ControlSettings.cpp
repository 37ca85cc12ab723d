#include "shell/widgets/ControlSettings.h"

#include "model/PanelState.h"
#include "settings/Preferences.h"
#include "shell/SettingsTexts.h"
#include "shell/widgets/DelayRow.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>
#include <QVBoxLayout>

ControlSettings::ControlSettings(Preferences& preferences, const PanelState& panel, QWidget* parent)
    : QWidget(parent), m_preferences(preferences), m_panel(panel),
      m_hover(new ToggleRow(SettingsTexts::hoverToggle())),
      m_openDelay(new DelayRow(SettingsTexts::openDelayLabel(), SettingsTexts::openDelayRange())),
      m_closeDelay(new DelayRow(SettingsTexts::closeDelayLabel(), SettingsTexts::closeDelayRange())),
      m_commands(new ToggleRow(SettingsTexts::commandsToggle())),
      m_commandDelay(new DelayRow(SettingsTexts::commandDelayLabel(), SettingsTexts::commandDelayRange())),
      m_shortcut(new QComboBox), m_status((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_hover);
    column->addWidget(m_openDelay);
    column->addWidget(m_closeDelay);
    column->addWidget((new TextLabel(SettingsTexts::hoverNote(), 11, TextLabel::secondary))->wrapping());
    column->addWidget(m_commands);
    column->addWidget(m_commandDelay);

    auto* picker = new QHBoxLayout;
    picker->setSpacing(12);
    picker->addWidget(new TextLabel(SettingsTexts::shortcutPicker(), 13), 1);
    for (HistoryShortcut shortcut : HistoryShortcuts::all())
        m_shortcut->addItem(SettingsTexts::shortcutChoice(shortcut), HistoryShortcuts::rawValue(shortcut));
    m_shortcut->setAccessibleName(SettingsTexts::shortcutPicker());
    m_shortcut->setCursor(Qt::PointingHandCursor);
    m_shortcut->setMinimumWidth(110);
    picker->addWidget(m_shortcut);
    column->addLayout(picker);
    column->addWidget(m_status);
    column->addStretch(1);

    auto edit = [this](auto change) { m_preferences.update(change); };
    connect(m_hover, &ToggleRow::toggled, this,
            [edit](bool on) { edit([on](PreferenceValues& v) { v.hover = on; }); });
    connect(m_openDelay, &DelayRow::secondsChanged, this,
            [edit](double s) { edit([s](PreferenceValues& v) { v.openDelay = s; }); });
    connect(m_closeDelay, &DelayRow::secondsChanged, this,
            [edit](double s) { edit([s](PreferenceValues& v) { v.closeDelay = s; }); });
    connect(m_commands, &ToggleRow::toggled, this,
            [edit](bool on) { edit([on](PreferenceValues& v) { v.commands = on; }); });
    connect(m_commandDelay, &DelayRow::secondsChanged, this,
            [edit](double s) { edit([s](PreferenceValues& v) { v.commandDelay = s; }); });
    connect(m_shortcut, &QComboBox::currentIndexChanged, this, [this, edit](int index) {
        const auto shortcut = HistoryShortcuts::fromRawValue(m_shortcut->itemData(index).toString());
        if (shortcut)
            edit([shortcut](PreferenceValues& v) { v.shortcut = *shortcut; });
    });
    connect(&preferences, &Preferences::valuesChanged, this, &ControlSettings::sync);
    connect(&panel, &PanelState::hotkeyStatusChanged, this, &ControlSettings::sync);
    sync();
}

QString ControlSettings::shortcutStatus() const
{
    return m_status->text();
}

void ControlSettings::sync()
{
    const PreferenceValues& values = m_preferences.values();
    m_hover->setState(values.hover);
    m_openDelay->setSeconds(values.openDelay);
    m_closeDelay->setSeconds(values.closeDelay);
    m_commands->setState(values.commands);
    m_commandDelay->setSeconds(values.commandDelay);
    {
        const QSignalBlocker blocker(m_shortcut);
        m_shortcut->setCurrentIndex(m_shortcut->findData(HistoryShortcuts::rawValue(values.shortcut)));
    }
    m_status->setText(m_panel.hotkeyStatus());
    m_status->setVisible(!m_panel.hotkeyStatus().isEmpty());
}
