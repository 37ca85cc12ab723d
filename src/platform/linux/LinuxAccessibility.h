#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/AtspiKeyBinding.h"

#include <QDBusConnection>
#include <QMutex>

#include <atomic>
#include <memory>
#include <optional>

class QDBusMessage;

// The accessibility interface over AT-SPI 2: the accessibility bus comes from the session bus's
// org.a11y.Bus, an application is the registry's child whose connection belongs to the process,
// the menu bar is the first descendant with the role "menu bar", and a menu item's shortcut is
// the key binding of its press action. Every call blocks for at most the element's time-out.
class LinuxAccessibility final : public Accessibility
{
public:
    LinuxAccessibility();
    ~LinuxAccessibility() override;

    AXElement applicationElement(qint64 pid) override;
    int copyAttribute(const AXElement& element, const QString& attribute, QVariant& value) override;
    int processId(const AXElement& element, qint64& pid) override;
    int actionNames(const AXElement& element, QStringList& names) override;
    int perform(const AXElement& element, const QString& action) override;

    // How many calls went over the accessibility bus, for the benchmark.
    int callCount() const { return m_calls; }

private:
    struct Action
    {
        QString name;
        QString description;
        QString keyBinding;
    };
    // The accessibility bus, connected on first use; nothing when the desktop has none.
    std::optional<QDBusConnection> bus();
    int call(const AXElement& element, const QString& interface, const QString& method,
             const QVariantList& arguments, QDBusMessage& reply);
    int property(const AXElement& element, const QString& name, QVariant& value);
    int children(const AXElement& element, AXElementList& list);
    int roleName(const AXElement& element, QString& role);
    int actions(const AXElement& element, QList<Action>& list);
    int shortcut(const AXElement& element, std::optional<MenuShortcut>& found);
    int menuBar(const AXElement& application, QVariant& value);
    int enabled(const AXElement& element, bool& on);
    // The index of the press action: one named press or click, else the first one.
    static int pressIndex(const QList<Action>& list);

    QMutex m_mutex;
    QString m_connectionName;
    bool m_connected = false;
    std::atomic<int> m_calls = 0;
    // The last shortcut read: the key and its modifiers are two reads of one binding.
    AXElement m_shortcutElement;
    std::optional<MenuShortcut> m_shortcut;
};
