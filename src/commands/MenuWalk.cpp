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
        walk({bar.value<AXElement>()}, 0, QString());
    }
    result.items = std::move(m_items);
    return result;
}

bool MenuWalk::outOfTime() const
{
    return m_clock.uptime() >= m_deadline;
}

QList<QVariantMap> MenuWalk::attributes(const AXElementList& elements, const QStringList& names)
{
    return m_accessibility.copyAttributes(elements, names, [this] { return outOfTime(); });
}

void MenuWalk::walk(const AXElementList& siblings, int depth, const QString& topLevelTitle)
{
    const QString titleName = QStringLiteral("AXTitle");
    const QString keyName = QStringLiteral("AXMenuItemCmdChar");
    const QString modifiersName = QStringLiteral("AXMenuItemCmdModifiers");
    const QString enabledName = QStringLiteral("AXEnabled");
    const QString childrenName = QStringLiteral("AXChildren");
    for (qsizetype start = 0; start < siblings.size(); start += batchSize) {
        if (depth > maxDepth || m_items.size() >= maxItems || outOfTime())
            return;
        const AXElementList batch = siblings.mid(start, batchSize);
        const QList<QVariantMap> values =
            attributes(batch, {titleName, keyName, modifiersName, childrenName});
        // Only items with a shortcut are listed, so only theirs is asked whether it is enabled.
        AXElementList keyed;
        QList<qsizetype> keyedIndex(batch.size(), -1);
        for (qsizetype i = 0; i < batch.size(); ++i) {
            const QVariant key = values.at(i).value(keyName);
            if (key.typeId() == QMetaType::QString && !key.toString().isEmpty()) {
                keyedIndex[i] = keyed.size();
                keyed.append(batch.at(i));
            }
        }
        const QList<QVariantMap> states =
            keyed.isEmpty() ? QList<QVariantMap>() : attributes(keyed, {enabledName});
        for (qsizetype i = 0; i < batch.size(); ++i) {
            if (m_items.size() >= maxItems)
                return;
            const QVariantMap& value = values.at(i);
            const QVariant titleValue = value.value(titleName);
            const QString title =
                titleValue.typeId() == QMetaType::QString ? titleValue.toString() : QString();
            if (depth == 1 && CommandPolicy::isAppleMenu(title))
                continue;
            if (keyedIndex.at(i) >= 0) {
                const QVariant modifiers = value.value(modifiersName);
                std::optional<int> bits;
                if (modifiers.typeId() == QMetaType::Int || modifiers.typeId() == QMetaType::LongLong)
                    bits = modifiers.toInt();
                const QVariant enabled = states.value(keyedIndex.at(i)).value(enabledName);
                CommandItem item;
                item.id = QUuid::createUuid();
                item.name = CommandPolicy::name(topLevelTitle, title);
                item.keys = CommandPolicy::keys(value.value(keyName).toString(), bits);
                item.element = batch.at(i);
                item.pid = qint32(m_pid);
                item.enabled = enabled.typeId() == QMetaType::Bool && enabled.toBool();
                m_items.append(item);
            }
            const AXElementList children = value.value(childrenName).value<AXElementList>();
            if (!children.isEmpty())
                walk(children, depth + 1, depth == 1 ? title : topLevelTitle);
        }
    }
}
