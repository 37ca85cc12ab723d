#include "commands/MenuWalk.h"

#include "commands/CommandPolicy.h"
#include "common/Clock.h"
#include "platform/Accessibility.h"

MenuRead MenuWalk::read(qint64 pid)
{
    m_pid = pid;
    m_items.clear();
    MenuRead result;
    const AXElement application = m_accessibility.applicationElement(pid).withTimeout(callTimeout);
    QVariant bar;
    result.error = application.isNull()
                       ? AXError::invalidElement
                       : m_accessibility.copyAttribute(application, QStringLiteral("AXMenuBar"), bar);
    // A menu bar read without error but without an element has no items and no error.
    if (result.error == AXError::noValue) {
        result.error = AXError::success;
        return result;
    }
    if (result.error == AXError::success && bar.canConvert<AXElement>()) {
        m_deadline = m_clock.uptime() + deadlineSeconds;
        walk(bar.value<AXElement>(), 0, QString());
    }
    result.items = std::move(m_items);
    return result;
}

bool MenuWalk::outOfTime() const
{
    return m_clock.uptime() >= m_deadline;
}

QVariant MenuWalk::attribute(const AXElement& element, const QString& name)
{
    QVariant value;
    if (outOfTime())
        return value;
    if (m_accessibility.copyAttribute(element, name, value) != AXError::success)
        value.clear();
    return value;
}

void MenuWalk::walk(const AXElement& element, int depth, const QString& topLevelTitle)
{
    if (depth > maxDepth || m_items.size() >= maxItems || outOfTime())
        return;
    const QVariant titleValue = attribute(element, QStringLiteral("AXTitle"));
    const QString title = titleValue.typeId() == QMetaType::QString ? titleValue.toString() : QString();
    if (depth == 1 && CommandPolicy::isAppleMenu(title))
        return;
    const QVariant key = attribute(element, QStringLiteral("AXMenuItemCmdChar"));
    if (key.typeId() == QMetaType::QString && !key.toString().isEmpty()) {
        const QVariant modifiers = attribute(element, QStringLiteral("AXMenuItemCmdModifiers"));
        std::optional<int> bits;
        if (modifiers.typeId() == QMetaType::Int || modifiers.typeId() == QMetaType::LongLong)
            bits = modifiers.toInt();
        const QVariant enabled = attribute(element, QStringLiteral("AXEnabled"));
        CommandItem item;
        item.id = QUuid::createUuid();
        item.name = CommandPolicy::name(topLevelTitle, title);
        item.keys = CommandPolicy::keys(key.toString(), bits);
        item.element = element;
        item.pid = qint32(m_pid);
        item.enabled = enabled.typeId() == QMetaType::Bool && enabled.toBool();
        m_items.append(item);
    }
    const QVariant children = attribute(element, QStringLiteral("AXChildren"));
    const QString childTitle = depth == 1 ? title : topLevelTitle;
    for (const AXElement& child : children.value<AXElementList>())
        walk(child, depth + 1, childTitle);
}
