#pragma once

// What a screen reader sees of a running program: its widgets over the accessibility bus, with
// their roles, names and places on the screen. Tests use it to find what to click and to read
// what the program shows, the way a user's assistive technology would.

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QList>
#include <QRect>
#include <QString>

#include <functional>
#include <optional>

struct AtspiReference
{
    QString service;
    QDBusObjectPath path;
};
Q_DECLARE_METATYPE(AtspiReference)

inline const QDBusArgument& operator>>(const QDBusArgument& argument, AtspiReference& reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}
inline QDBusArgument& operator<<(QDBusArgument& argument, const AtspiReference& reference)
{
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}

// One widget as the accessibility bus describes it.
struct AtspiNode
{
    QString role;
    QString name;
    QRect extents; // screen coordinates
    bool showing = false;
};

class AtspiScreen
{
public:
    // Connects to the accessibility bus of the current session.
    AtspiScreen() : m_bus(QDBusConnection::connectToBus(address(), QStringLiteral("atspi-screen")))
    {
        qDBusRegisterMetaType<AtspiReference>();
        qDBusRegisterMetaType<QList<AtspiReference>>();
    }
    ~AtspiScreen() { QDBusConnection::disconnectFromBus(QStringLiteral("atspi-screen")); }

    bool connected() const { return m_bus.isConnected(); }

    // The showing widgets of the application called `application`, depth first.
    QList<AtspiNode> showing(const QString& application) const
    {
        QList<AtspiNode> nodes;
        const auto root = AtspiReference{QStringLiteral("org.a11y.atspi.Registry"),
                                         QDBusObjectPath(QStringLiteral("/org/a11y/atspi/accessible/root"))};
        for (const AtspiReference& app : children(root)) {
            if (property(app, QStringLiteral("Name")) == application)
                walk(app, nodes, 0);
        }
        return nodes;
    }

    // The first showing widget with this role whose name satisfies `matches`.
    std::optional<AtspiNode> find(const QString& application, const QString& role,
                                  const std::function<bool(const QString&)>& matches) const
    {
        for (const AtspiNode& node : showing(application)) {
            if (node.role == role && matches(node.name))
                return node;
        }
        return std::nullopt;
    }
    std::optional<AtspiNode> find(const QString& application, const QString& role, const QString& name) const
    {
        return find(application, role, [&name](const QString& candidate) { return candidate == name; });
    }

private:
    static QString address()
    {
        QDBusInterface bus(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                           QStringLiteral("org.a11y.Bus"));
        const QDBusMessage reply = bus.call(QStringLiteral("GetAddress"));
        return reply.arguments().value(0).toString();
    }

    QDBusMessage call(const AtspiReference& node, const QString& interface, const QString& method,
                      const QVariantList& arguments = {}) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(node.service, node.path.path(), interface, method);
        message.setArguments(arguments);
        return m_bus.call(message, QDBus::Block, 3000);
    }

    QString property(const AtspiReference& node, const QString& name) const
    {
        const QDBusMessage reply =
            call(node, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                 {QStringLiteral("org.a11y.atspi.Accessible"), name});
        return reply.arguments().value(0).value<QDBusVariant>().variant().toString();
    }

    QList<AtspiReference> children(const AtspiReference& node) const
    {
        const QDBusMessage reply =
            call(node, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetChildren"));
        if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
            return {};
        QList<AtspiReference> list;
        reply.arguments().constFirst().value<QDBusArgument>() >> list;
        return list;
    }

    void walk(const AtspiReference& node, QList<AtspiNode>& into, int depth) const
    {
        if (depth > 40)
            return;
        for (const AtspiReference& child : children(node)) {
            AtspiNode entry;
            const QDBusMessage state =
                call(child, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetState"));
            QList<uint> bits;
            if (!state.arguments().isEmpty())
                state.arguments().constFirst().value<QDBusArgument>() >> bits;
            // ATSPI_STATE_SHOWING is bit 25 of the first word.
            entry.showing = !bits.isEmpty() && (bits.constFirst() & (1u << 25));
            if (!entry.showing)
                continue;
            entry.name = property(child, QStringLiteral("Name"));
            entry.role =
                call(child, QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("GetRoleName"))
                    .arguments()
                    .value(0)
                    .toString();
            const QDBusMessage extents = call(child, QStringLiteral("org.a11y.atspi.Component"),
                                              QStringLiteral("GetExtents"), {QVariant::fromValue(uint(0))});
            if (!extents.arguments().isEmpty()) {
                const QDBusArgument box = extents.arguments().constFirst().value<QDBusArgument>();
                int x = 0, y = 0, width = 0, height = 0;
                box.beginStructure();
                box >> x >> y >> width >> height;
                box.endStructure();
                entry.extents = QRect(x, y, width, height);
            }
            into.append(entry);
            walk(child, into, depth + 1);
        }
    }

    QDBusConnection m_bus;
};
