#include "platform/memory/MemoryAccessibility.h"

#include <QMutexLocker>

namespace {
const QString service = QStringLiteral("memory.a11y");
}

QString MemoryAccessibility::addApplication(qint64 pid)
{
    QMutexLocker lock(&m_mutex);
    const QString id = QStringLiteral("/app/%1").arg(++m_next);
    m_nodes.insert(id, Node{pid, {}, {}, {}});
    m_applications.insert(pid, id);
    return id;
}

QString MemoryAccessibility::addElement(const QString& parent, const QVariantMap& attributes,
                                        const QStringList& actions)
{
    QMutexLocker lock(&m_mutex);
    const QString id = QStringLiteral("/node/%1").arg(++m_next);
    const qint64 pid = m_nodes.value(parent).pid;
    m_nodes.insert(id, Node{pid, attributes, {}, actions});
    m_nodes[parent].children.append(id);
    return id;
}

QString MemoryAccessibility::addMenuItem(const QString& parent, const QString& title, const QString& key,
                                         int modifiers, bool enabled)
{
    QVariantMap attributes{{QStringLiteral("AXTitle"), title}, {QStringLiteral("AXEnabled"), enabled}};
    if (!key.isEmpty()) {
        attributes.insert(QStringLiteral("AXMenuItemCmdChar"), key);
        attributes.insert(QStringLiteral("AXMenuItemCmdModifiers"), modifiers);
    }
    return addElement(parent, attributes);
}

QString MemoryAccessibility::menuBar(qint64 pid)
{
    QString application;
    {
        QMutexLocker lock(&m_mutex);
        if (m_menuBars.contains(pid))
            return m_menuBars.value(pid);
        application = m_applications.value(pid);
    }
    if (application.isEmpty())
        application = addApplication(pid);
    const QString bar = addElement(application, {});
    QMutexLocker lock(&m_mutex);
    m_menuBars.insert(pid, bar);
    return bar;
}

void MemoryAccessibility::setUnresponsive(qint64 pid, bool unresponsive)
{
    QMutexLocker lock(&m_mutex);
    if (unresponsive)
        m_unresponsive.insert(pid);
    else
        m_unresponsive.remove(pid);
}

void MemoryAccessibility::removeApplication(qint64 pid)
{
    QMutexLocker lock(&m_mutex);
    m_applications.remove(pid);
    m_menuBars.remove(pid);
    for (auto it = m_nodes.begin(); it != m_nodes.end();) {
        if (it->pid == pid)
            it = m_nodes.erase(it);
        else
            ++it;
    }
}

void MemoryAccessibility::setOnCall(std::function<void()> onCall)
{
    QMutexLocker lock(&m_mutex);
    m_onCall = std::move(onCall);
}

QStringList MemoryAccessibility::pressed() const
{
    QMutexLocker lock(&m_mutex);
    return m_pressed;
}

int MemoryAccessibility::calls() const
{
    QMutexLocker lock(&m_mutex);
    return m_calls;
}

AXElement MemoryAccessibility::element(const QString& id) const
{
    return AXElement{service, id};
}

int MemoryAccessibility::lookup(const AXElement& element, Node& node)
{
    ++m_calls;
    if (m_onCall)
        m_onCall();
    const auto found = m_nodes.constFind(element.path);
    if (element.service != service || found == m_nodes.cend())
        return AXError::invalidElement;
    if (m_unresponsive.contains(found->pid))
        return AXError::cannotComplete;
    node = *found;
    return AXError::success;
}

AXElement MemoryAccessibility::applicationElement(qint64 pid)
{
    QMutexLocker lock(&m_mutex);
    const QString id = m_applications.value(pid);
    return id.isEmpty() ? AXElement{} : AXElement{service, id};
}

int MemoryAccessibility::copyAttribute(const AXElement& element, const QString& attribute, QVariant& value)
{
    QMutexLocker lock(&m_mutex);
    value.clear();
    Node node;
    if (const int error = lookup(element, node); error != AXError::success)
        return error;
    if (attribute == u"AXMenuBar") {
        const QString bar = m_menuBars.value(node.pid);
        if (bar.isEmpty() || m_applications.value(node.pid) != element.path)
            return AXError::noValue;
        value = QVariant::fromValue(AXElement{service, bar, element.timeoutMs});
        return AXError::success;
    }
    if (attribute == u"AXChildren") {
        AXElementList list;
        for (const QString& child : node.children)
            list.append(AXElement{service, child, element.timeoutMs});
        value = QVariant::fromValue(list);
        return AXError::success;
    }
    if (!node.attributes.contains(attribute))
        return AXError::noValue;
    value = node.attributes.value(attribute);
    return AXError::success;
}

int MemoryAccessibility::processId(const AXElement& element, qint64& pid)
{
    QMutexLocker lock(&m_mutex);
    Node node;
    if (const int error = lookup(element, node); error != AXError::success)
        return error;
    pid = node.pid;
    return AXError::success;
}

int MemoryAccessibility::actionNames(const AXElement& element, QStringList& names)
{
    QMutexLocker lock(&m_mutex);
    Node node;
    if (const int error = lookup(element, node); error != AXError::success)
        return error;
    names = node.actions;
    return AXError::success;
}

int MemoryAccessibility::perform(const AXElement& element, const QString& action)
{
    QMutexLocker lock(&m_mutex);
    Node node;
    if (const int error = lookup(element, node); error != AXError::success)
        return error;
    if (!node.actions.contains(action))
        return AXError::actionUnsupported;
    m_pressed.append(element.path);
    return AXError::success;
}
