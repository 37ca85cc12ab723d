#include "commands/widgets/MenuBarAppsSettings.h"

#include "commands/MenuBarApps.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

MenuBarAppsSettings::MenuBarAppsSettings(MenuBarApps& apps, QWidget* parent)
    : QWidget(parent), m_apps(apps),
      m_enabled(new ToggleRow(
          QStringLiteral("Menüleisten-Apps in Brenlow"),
          QStringLiteral("Standardmäßig aus. Nach Aktivierung die gewünschten Apps wählen. Brenlow "
                         "öffnet ihre eigenen Menüs; nicht jede App unterstützt den Zugriff."))),
      m_notifications(new ToggleRow(
          QStringLiteral("App-Hinweise links aus der Notch einblenden"),
          QStringLiteral(
              "Wähle bei den Apps zusätzlich Hinweise. Erkannt werden steigende, von der App zugänglich "
              "gemachte Nachrichten- oder Benachrichtigungszähler (Prüfung etwa alle 10 Sekunden). Reine "
              "Icon-Badges und fremde Mitteilungen können nicht allgemein gelesen werden. Die erste "
              "Erkennung dient nur als Ausgangswert."))),
      m_adopt(new QPushButton(QStringLiteral("Gruppe übernehmen & ausblenden"))),
      m_show(new QPushButton(QStringLiteral("Originale einblenden"))),
      m_scan(new QPushButton(QStringLiteral("Apps neu suchen"))),
      m_message((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping()), m_entries(new QVBoxLayout)
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_enabled);
    column->addWidget(m_notifications);
    column->addWidget(new TextLabel(QStringLiteral("Originalsymbole ausblenden"), 10, TextLabel::caps));
    column->addWidget(
        (new TextLabel(
             QStringLiteral(
                 "Halte ⌘ gedrückt und ziehe die gewünschten Symbole oben links neben den "
                 "Brenlow-Trennstrich │. Die gesamte Gruppe links davon wird ausgeblendet und "
                 "in Brenlow übernommen. Der Pfeil bleibt als Rückweg sichtbar. Beim Öffnen eines "
                 "Originalmenüs wird die Gruppe wieder sichtbar; danach über den Pfeil einklappen."),
             11, TextLabel::secondary))
            ->wrapping());
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_adopt);
    buttons->addWidget(m_show);
    buttons->addWidget(m_scan);
    buttons->addStretch(1);
    column->addLayout(buttons);
    column->addLayout(m_entries);
    column->addWidget(m_message);

    connect(m_enabled, &ToggleRow::toggled, &apps, &MenuBarApps::setEnabled);
    connect(m_notifications, &ToggleRow::toggled, &apps, &MenuBarApps::setNotificationsEnabled);
    connect(m_adopt, &QPushButton::clicked, &apps, &MenuBarApps::adoptGroup);
    connect(m_show, &QPushButton::clicked, &apps, &MenuBarApps::showGroup);
    connect(m_scan, &QPushButton::clicked, this, [this] { m_apps.refresh(); });
    connect(&apps, &MenuBarApps::enabledChanged, this, &MenuBarAppsSettings::sync);
    connect(&apps, &MenuBarApps::notificationsEnabledChanged, this, &MenuBarAppsSettings::sync);
    connect(&apps, &MenuBarApps::messageChanged, this, &MenuBarAppsSettings::sync);
    connect(&apps, &MenuBarApps::scanningChanged, this, &MenuBarAppsSettings::sync);
    connect(&apps, &MenuBarApps::entriesChanged, this, &MenuBarAppsSettings::rebuildEntries);
    connect(&apps, &MenuBarApps::selectionChanged, this, &MenuBarAppsSettings::rebuildEntries);
    sync();
    rebuildEntries();
}

void MenuBarAppsSettings::sync()
{
    m_enabled->setState(m_apps.enabled());
    m_notifications->setState(m_apps.notificationsEnabled());
    m_adopt->setEnabled(m_apps.enabled() && !m_apps.scanning());
    m_show->setEnabled(m_apps.enabled());
    m_scan->setEnabled(m_apps.enabled() && !m_apps.scanning());
    m_message->setText(m_apps.message());
}

void MenuBarAppsSettings::rebuildEntries()
{
    // A row's own switch may be what changed the selection: it goes once its signal is done.
    for (ToggleRow* row : std::as_const(m_rows)) {
        row->hide();
        row->deleteLater();
    }
    m_rows.clear();
    for (const MenuBarEntry& entry : m_apps.entries()) {
        auto* select = new ToggleRow(entry.name, entry.detail);
        select->setState(m_apps.selected().contains(entry.id));
        const QString id = entry.id;
        connect(select, &ToggleRow::toggled, this, [this, id](bool on) { m_apps.setSelected(id, on); });
        const auto count = m_apps.noticePolicy().counts.constFind(id);
        const QString counter = count != m_apps.noticePolicy().counts.cend()
                                    ? QStringLiteral("Zähler: %1").arg(*count)
                                    : QStringLiteral("Kein Zähler erkannt");
        auto* notices = new ToggleRow(QStringLiteral("Hinweise"), counter);
        notices->setState(m_apps.notificationSelection().contains(id));
        connect(notices, &ToggleRow::toggled, this, [this, id](bool on) { m_apps.setNotifications(id, on); });
        m_entries->addWidget(select);
        m_entries->addWidget(notices);
        m_rows << select << notices;
    }
}
