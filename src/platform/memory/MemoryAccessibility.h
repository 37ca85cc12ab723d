#pragma once

#include "platform/Accessibility.h"

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QVariantMap>

#include <functional>

// An accessibility tree kept in memory: applications by process id, elements with attributes,
// children and actions. Calls may run on a worker thread while a test changes the tree, so
// everything is behind one lock.
class MemoryAccessibility final : public Accessibility
{
public:
    // Adds an application's root element; answers its id.
    QString addApplication(qint64 pid);
    // Adds an element below `parent` with these attributes; answers its id.
    QString addElement(const QString& parent, const QVariantMap& attributes,
                       const QStringList& actions = {QStringLiteral("AXPress")});
    // A menu item with a shortcut: title, key character, modifier bits and enabled state.
    QString addMenuItem(const QString& parent, const QString& title, const QString& key = {},
                        int modifiers = 0, bool enabled = true);
    // The application's menu bar (created on first use).
    QString menuBar(qint64 pid);
    // The application stops answering: every call on its elements is "cannot complete".
    void setUnresponsive(qint64 pid, bool unresponsive);
    // The application quits: its elements become invalid.
    void removeApplication(qint64 pid);
    // Called before every answered call, so a test can let time pass per call.
    void setOnCall(std::function<void()> onCall);
    // Elements pressed so far, in order.
    QStringList pressed() const;
    int calls() const;
    AXElement element(const QString& id) const;

    AXElement applicationElement(qint64 pid) override;
    int copyAttribute(const AXElement& element, const QString& attribute, QVariant& value) override;
    int processId(const AXElement& element, qint64& pid) override;
    int actionNames(const AXElement& element, QStringList& names) override;
    int perform(const AXElement& element, const QString& action) override;

private:
    struct Node
    {
        qint64 pid = 0;
        QVariantMap attributes;
        QStringList children;
        QStringList actions;
    };
    // The node behind an element, or the error a call on it gets. Holds the lock.
    int lookup(const AXElement& element, Node& node);

    mutable QMutex m_mutex;
    QHash<QString, Node> m_nodes;
    QHash<qint64, QString> m_applications;
    QHash<qint64, QString> m_menuBars;
    QSet<qint64> m_unresponsive;
    QStringList m_pressed;
    std::function<void()> m_onCall;
    int m_next = 0;
    int m_calls = 0;
};
