#include "commands/widgets/MenuBarAppsPane.h"

#include "commands/MenuBarApps.h"
#include "ui/TextLabel.h"

#include <QCursor>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// Adds the entries of an item's menu to a Brenlow menu; a click runs the entry in its app.
void fill(QMenu* menu, const QList<TrayMenuEntry>& entries, MenuBarApps& apps, const MenuBarEntry& owner)
{
    for (const TrayMenuEntry& entry : entries) {
        if (entry.id < 0)
            continue;
        if (entry.separator) {
            menu->addSeparator();
        } else if (!entry.children.isEmpty()) {
            fill(menu->addMenu(entry.label), entry.children, apps, owner);
        } else {
            QAction* action = menu->addAction(entry.label);
            action->setEnabled(entry.enabled);
            const int id = entry.id;
            QObject::connect(action, &QAction::triggered, &apps,
                             [&apps, owner, id] { apps.clickMenuEntry(owner, id); });
        }
    }
}
} // namespace

MenuBarAppsPane::MenuBarAppsPane(MenuBarApps& apps, QWidget* parent)
    : QWidget(parent), m_apps(apps), m_refresh(new QPushButton(QStringLiteral("Aktualisieren"))),
      m_list(new QVBoxLayout), m_empty((new TextLabel(emptyText(), 12, TextLabel::secondary))->wrapping())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    auto* top = new QHBoxLayout;
    top->addWidget(
        new TextLabel(QStringLiteral("Deine Menüleisten-Apps"), 13, TextLabel::primary, QFont::DemiBold), 1);
    top->addWidget(m_refresh);
    column->addLayout(top);
    auto* message = (new TextLabel(apps.message(), 11, TextLabel::secondary))->wrapping();
    column->addWidget(message);
    column->addLayout(m_list);
    column->addWidget(m_empty);
    column->addStretch(1);

    connect(m_refresh, &QPushButton::clicked, this, [this] { m_apps.refresh(); });
    connect(&apps, &MenuBarApps::entriesChanged, this, &MenuBarAppsPane::rebuild);
    connect(&apps, &MenuBarApps::selectionChanged, this, &MenuBarAppsPane::rebuild);
    connect(&apps, &MenuBarApps::messageChanged, message,
            [message, &apps] { message->setText(apps.message()); });
    connect(&apps, &MenuBarApps::menuReady, this, &MenuBarAppsPane::showMenu);
    rebuild();
}

QString MenuBarAppsPane::emptyText()
{
    return QStringLiteral(
        "Wähle zuerst Apps unter Einstellungen → Menüleiste. Nicht gestartete Apps erscheinen nach "
        "dem nächsten Aktualisieren.");
}

void MenuBarAppsPane::rebuild()
{
    for (QPushButton* button : std::as_const(m_buttons)) {
        button->hide();
        button->deleteLater();
    }
    m_buttons.clear();
    const QList<MenuBarEntry> chosen = m_apps.chosen();
    for (const MenuBarEntry& entry : chosen) {
        auto* button = new QPushButton(entry.name + QStringLiteral(" – ") + entry.detail);
        button->setToolTip(entry.notificationLabel);
        connect(button, &QPushButton::clicked, this, [this, entry] { m_apps.open(entry); });
        m_list->addWidget(button);
        m_buttons.append(button);
    }
    m_empty->setVisible(chosen.isEmpty());
}

void MenuBarAppsPane::showMenu(const MenuBarEntry& entry, const QList<TrayMenuEntry>& entries)
{
    if (!isVisible())
        return;
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    fill(menu, entries, m_apps, entry);
    if (menu->isEmpty())
        menu->addAction(QStringLiteral("Dieses Menü ist leer."))->setEnabled(false);
    menu->popup(QCursor::pos());
}
