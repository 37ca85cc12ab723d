#include "commands/MenuBarApps.h"

#include "common/Scheduler.h"
#include "platform/Displays.h"
#include "platform/StatusBar.h"
#include "settings/Defaults.h"
#include "setup/PermissionStore.h"

#include <algorithm>

namespace {
const QString enabledKey = QStringLiteral("menuApps.enabled");
const QString notificationsKey = QStringLiteral("menuApps.notificationsEnabled");
const QString selectedKey = QStringLiteral("menuApps.selected");
const QString notificationSelectionKey = QStringLiteral("menuApps.notificationSelection");

QSet<QString> storedSet(const Defaults& defaults, const QString& key)
{
    const QStringList list = defaults.stringArrayValue(key).value_or(QStringList());
    return QSet<QString>(list.cbegin(), list.cend());
}
} // namespace

MenuBarApps::MenuBarApps(Defaults& defaults, StatusBar& statusBar, Displays& displays, Scheduler& scheduler,
                         PermissionStore& permissions, QObject* parent)
    : QObject(parent), m_defaults(defaults), m_statusBar(statusBar), m_displays(displays),
      m_scheduler(scheduler), m_permissions(permissions),
      m_enabled(defaults.boolValue(enabledKey).value_or(false)),
      m_notificationsEnabled(defaults.boolValue(notificationsKey).value_or(false)),
      m_selected(storedSet(defaults, selectedKey)),
      m_notificationSelection(storedSet(defaults, notificationSelectionKey))
{
    connect(&statusBar, &StatusBar::trayItemsChanged, this, &MenuBarApps::itemsChanged);
    connect(&statusBar, &StatusBar::groupArrowClicked, this, &MenuBarApps::toggleGroup);
    connect(&statusBar, &StatusBar::groupSeparatorClicked, this, &MenuBarApps::showConfiguration);
}

MenuBarApps::~MenuBarApps()
{
    if (m_monitor)
        m_scheduler.cancel(m_monitor);
}

QList<MenuBarEntry> MenuBarApps::chosen() const
{
    QList<MenuBarEntry> list;
    for (const MenuBarEntry& entry : m_entries) {
        if (m_selected.contains(entry.id))
            list.append(entry);
    }
    return list;
}

void MenuBarApps::setEnabled(bool enabled)
{
    m_defaults.setBool(enabledKey, enabled);
    if (enabled != m_enabled) {
        m_enabled = enabled;
        Q_EMIT enabledChanged();
    }
    configure();
}

void MenuBarApps::setNotificationsEnabled(bool enabled)
{
    m_defaults.setBool(notificationsKey, enabled);
    if (enabled != m_notificationsEnabled) {
        m_notificationsEnabled = enabled;
        Q_EMIT notificationsEnabledChanged();
    }
    configureMonitoring();
}

void MenuBarApps::configure()
{
    if (!m_started)
        return;
    m_generation = QUuid::createUuid();
    setScanning(false);
    if (m_enabled) {
        if (!m_statusBar.groupItemsShown())
            m_statusBar.showGroupItems(true);
        m_statusBar.startHost();
        configureMonitoring();
        refresh();
        setMessage(QStringLiteral(
            "Symbole auswählen. Zum Ausblenden mit ⌘ links neben den Trennstrich ziehen und die "
            "Gruppe übernehmen."));
    } else {
        shutdown();
        if (!m_entries.isEmpty()) {
            m_entries.clear();
            Q_EMIT entriesChanged();
        }
        setMessage(QStringLiteral(
            "Menüleisten-Integration ausgeschaltet. Alle Originalsymbole sind wieder sichtbar."));
    }
}

void MenuBarApps::refresh(std::function<void()> completion)
{
    if (!m_enabled)
        return;
    if (m_scanning) {
        m_rescan = true;
        return;
    }
    if (!m_permissions.accessibility()) {
        setMessage(QStringLiteral("Bedienungshilfen für Brenlow freigeben und erneut suchen."));
        return;
    }
    setScanning(true);
    const QUuid generation = m_generation;
    StatusBar* statusBar = &m_statusBar;
    m_queue.run<QList<MenuBarEntry>>(
        this, [statusBar] { return MenuBarRules::entries(statusBar->trayItems()); },
        [this, generation, completion = std::move(completion)](QList<MenuBarEntry> scanned) {
            applyScan(generation, scanned, completion);
        });
}

void MenuBarApps::applyScan(const QUuid& generation, const QList<MenuBarEntry>& scanned,
                            std::function<void()> completion)
{
    if (!m_enabled || generation != m_generation)
        return;
    m_entries = MenuBarRules::unique(scanned);
    Q_EMIT entriesChanged();
    setScanning(false);
    updateCounters();
    if (scanned.isEmpty())
        setMessage(QStringLiteral(
            "Keine bedienbaren Menüleistensymbole gefunden. Freigabe prüfen und erneut suchen."));
    else
        setMessage(QStringLiteral("%1 bedienbare Symbole gefunden.").arg(scanned.size()));
    if (completion)
        completion();
    // A change announced during the scan is read now.
    if (m_rescan) {
        m_rescan = false;
        refresh();
    }
}

void MenuBarApps::itemsChanged()
{
    // New titles and tool tips are an extra trigger for the counters; the list follows as well.
    if (m_enabled && m_started)
        refresh();
}

void MenuBarApps::storeSet(const QString& key, const QSet<QString>& set)
{
    QStringList list(set.cbegin(), set.cend());
    list.sort();
    m_defaults.setStringArray(key, list);
}

void MenuBarApps::setSelected(const QString& id, bool on)
{
    showGroup();
    if (on)
        m_selected.insert(id);
    else
        m_selected.remove(id);
    storeSet(selectedKey, m_selected);
    Q_EMIT selectionChanged();
    configureMonitoring();
}

void MenuBarApps::setNotifications(const QString& id, bool on)
{
    if (on)
        m_notificationSelection.insert(id);
    else
        m_notificationSelection.remove(id);
    storeSet(notificationSelectionKey, m_notificationSelection);
    Q_EMIT selectionChanged();
    configureMonitoring();
    refresh();
}

void MenuBarApps::showGroup()
{
    if (m_statusBar.groupItemsShown())
        m_statusBar.setSeparatorLength(shownSeparatorLength);
    setHidden(false);
}

void MenuBarApps::toggleGroup()
{
    if (m_hidden)
        showGroup();
    else
        adoptGroup();
}

void MenuBarApps::showConfiguration()
{
    showGroup();
    Q_EMIT openSettings();
}

void MenuBarApps::adoptGroup()
{
    if (!m_enabled || m_scanning)
        return;
    if (!m_statusBar.supportsHiding()) {
        setMessage(
            QStringLiteral("Ausblenden ist auf dieser macOS-Version noch nicht unterstützt. App-Auswahl und "
                           "Menüzugriff bleiben verfügbar."));
        return;
    }
    showGroup();
    m_scheduler.schedule(adoptDelay, this, [this] {
        refresh([this] {
            const auto edge = m_statusBar.separatorLeftEdge();
            if (!edge)
                return;
            const QStringList ids = MenuBarRules::adopted(m_entries, *edge);
            if (ids.isEmpty()) {
                setMessage(QStringLiteral(
                    "Zuerst gewünschte Symbole mit ⌘ links neben den Brenlow-Trennstrich ziehen."));
                return;
            }
            m_selected = QSet<QString>(ids.cbegin(), ids.cend());
            storeSet(selectedKey, m_selected);
            Q_EMIT selectionChanged();
            std::optional<double> widest;
            for (const DisplayInfo& display : m_displays.displays())
                widest = std::max(widest.value_or(0.0), display.frame.width());
            m_statusBar.setSeparatorLength(MenuBarRules::hiddenSeparatorLength(widest));
            setHidden(true);
            configureMonitoring();
            setMessage(QStringLiteral(
                "Gruppe ausgeblendet. Öffnen über Brenlow; der Pfeil oben blendet die Originale "
                "jederzeit wieder ein."));
        });
    });
}

void MenuBarApps::open(const MenuBarEntry& entry)
{
    if (!m_enabled || !m_selected.contains(entry.id))
        return;
    if (!m_permissions.accessibility()) {
        setMessage(QStringLiteral("Bedienungshilfen sind nicht freigegeben."));
        return;
    }
    showGroup();
    Q_EMIT beforeOpen();
    const QUuid generation = m_generation;
    m_scheduler.schedule(openDelay, this, [this, entry, generation] {
        if (!m_enabled || generation != m_generation || !m_selected.contains(entry.id))
            return;
        StatusBar* statusBar = &m_statusBar;
        const TrayItem item = entry.item;
        m_queue.run<OpenResult>(
            this,
            [statusBar, item] {
                OpenResult result;
                // An item with a menu of its own shows it in Brenlow; any other is activated.
                if (item.hasMenu) {
                    result.menu = statusBar->itemMenu(item);
                    result.answered = result.menu.has_value();
                } else {
                    result.answered = statusBar->activateItem(item);
                }
                return result;
            },
            [this, entry, generation](OpenResult result) {
                if (!m_enabled || generation != m_generation)
                    return;
                if (!result.answered) {
                    setMessage(QStringLiteral(
                        "Dieses Symbol lässt sich nicht fernbedienen. Es bleibt oben erreichbar; "
                        "gegebenenfalls Liste aktualisieren."));
                    return;
                }
                setMessage(
                    QStringLiteral("Originalmenü geöffnet. Mit dem Brenlow-Pfeil oben die Gruppe wieder "
                                   "einklappen."));
                if (result.menu)
                    Q_EMIT menuReady(entry, *result.menu);
            });
    });
}

void MenuBarApps::clickMenuEntry(const MenuBarEntry& entry, int entryId)
{
    StatusBar* statusBar = &m_statusBar;
    const TrayItem item = entry.item;
    m_queue.run<bool>(
        this, [statusBar, item, entryId] { return statusBar->clickMenuEntry(item, entryId); },
        [this](bool done) {
            if (!done)
                setMessage(
                    QStringLiteral("Dieses Symbol lässt sich nicht fernbedienen. Es bleibt oben erreichbar; "
                                   "gegebenenfalls Liste aktualisieren."));
        });
}

void MenuBarApps::shutdown()
{
    if (m_monitor) {
        m_scheduler.cancel(m_monitor);
        m_monitor = 0;
    }
    m_noticePolicy.counts.clear();
    m_statusBar.stopHost();
    m_statusBar.showGroupItems(false);
    setHidden(false);
}

void MenuBarApps::configureMonitoring()
{
    if (m_monitor) {
        m_scheduler.cancel(m_monitor);
        m_monitor = 0;
    }
    m_noticePolicy.counts.clear();
    const bool watched = std::any_of(m_notificationSelection.cbegin(), m_notificationSelection.cend(),
                                     [this](const QString& id) { return m_selected.contains(id); });
    if (m_started && m_enabled && m_notificationsEnabled && watched)
        scheduleTick();
}

void MenuBarApps::scheduleTick()
{
    m_monitor = m_scheduler.schedule(pollInterval, this, [this] {
        m_monitor = 0;
        scheduleTick();
        refresh();
    });
}

void MenuBarApps::updateCounters()
{
    if (!m_notificationsEnabled)
        return;
    for (const MenuBarEntry& entry : std::as_const(m_entries)) {
        if (!m_selected.contains(entry.id) || !m_notificationSelection.contains(entry.id))
            continue;
        if (const auto rose = m_noticePolicy.update(entry.id, entry.notificationLabel))
            Q_EMIT notification(entry, *rose);
    }
}

void MenuBarApps::setMessage(const QString& message)
{
    if (message == m_message)
        return;
    m_message = message;
    Q_EMIT messageChanged();
}

void MenuBarApps::setHidden(bool hidden)
{
    if (hidden == m_hidden)
        return;
    m_hidden = hidden;
    Q_EMIT hiddenChanged();
}

void MenuBarApps::setScanning(bool scanning)
{
    if (scanning == m_scanning)
        return;
    m_scanning = scanning;
    Q_EMIT scanningChanged();
}
