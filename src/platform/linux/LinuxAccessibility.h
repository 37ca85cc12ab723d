#pragma once

#include "platform/Accessibility.h"
#include "platform/linux/AtspiKeyBinding.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QMutex>

#include <atomic>
#include <memory>
#include <optional>

class QDBusMessage;

// The accessibility interface over AT-SPI 2: the accessibility bus comes from the session bus's
// org.a11y.Bus, an application is the registry's child whose connection belongs to the process,
// the menu bar is the first descendant with the role "menu bar", and a menu item's shortcut is
// the key binding of its press action. Every call blocks for at most the element's time-out.
// Reads of several elements send all their calls at once and then wait for the answers.
class LinuxAccessibility final : public Accessibility
{
public:
    LinuxAccessibility();
    ~LinuxAccessibility() override;

    AXElement applicationElement(qint64 pid) override;
    int copyAttribute(const AXElement& element, const QString& attribute, QVariant& value) override;
    // An element with children opens a submenu: its binding is only a mnemonic, so no shortcut
    // is read for it when the children are read along.
    QList<QVariantMap> copyAttributes(const AXElementList& elements, const QStringList& attributes,
                                      const std::function<bool()>& stop) override;
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
    // Sends a call without waiting; a call on a null element is answered with an error at once.
    QDBusPendingCall send(const QDBusConnection& connection, const AXElement& element,
                          const QString& interface, const QString& method,
                          const QVariantList& arguments = {});
    QDBusPendingCall sendProperty(const QDBusConnection& connection, const AXElement& element,
                                  const QString& name);
    // Waits for a sent call's answer.
    static int await(QDBusPendingCall& pending, QDBusMessage& reply);
    int call(const AXElement& element, const QString& interface, const QString& method,
             const QVariantList& arguments, QDBusMessage& reply);
    int property(const AXElement& element, const QString& name, QVariant& value);
    int children(const AXElement& element, AXElementList& list);
    int actions(const AXElement& element, QList<Action>& list);
    // The answers' contents.
    static int propertyValue(const QDBusMessage& reply, QVariant& value);
    static int childList(const AXElement& parent, const QDBusMessage& reply, AXElementList& list);
    static int actionList(const QDBusMessage& reply, QList<Action>& list);
    static int enabledState(const QDBusMessage& reply, bool& on);
    // The shortcut a press binding names; a mnemonic of the title is none.
    static std::optional<MenuShortcut> shortcutOf(const QString& binding,
                                                  const std::optional<QString>& title);
    int shortcut(const AXElement& element, std::optional<MenuShortcut>& found);
    int menuBar(const AXElement& application, QVariant& value);
    // What a batch learns on its way to an element's shortcut.
    struct PressRead
    {
        bool leaf = false;
        std::optional<QString> title;
        int index = -1;
        QString binding;
        std::optional<MenuShortcut> shortcut;
    };
    // The shortcuts of the leaves among `elements`, their calls overlapped.
    void readShortcuts(const QDBusConnection& connection, const AXElementList& elements,
                       QList<PressRead>& presses, const std::function<bool()>& stop);
    // The attributes a batch does not overlap, read one after another into `values`.
    QList<QVariantMap> readOneByOne(const AXElementList& elements, const QStringList& attributes,
                                    const std::function<bool()>& stop, QList<QVariantMap>& values);
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
