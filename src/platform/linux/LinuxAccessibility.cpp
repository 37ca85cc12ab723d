#include "platform/linux/LinuxAccessibility.h"

#include "common/Log.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QMutexLocker>
#include <QUuid>

#include <deque>

namespace {

const QString accessibleInterface = QStringLiteral("org.a11y.atspi.Accessible");
const QString actionInterface = QStringLiteral("org.a11y.atspi.Action");
const QString registryService = QStringLiteral("org.a11y.atspi.Registry");
const QString rootPath = QStringLiteral("/org/a11y/atspi/accessible/root");
constexpr int addressTimeoutMs = 1000;
// AT-SPI's state bit for an enabled element.
constexpr int stateEnabled = 8;
// The menu bar sits below the application's window and a few containers; a text editor's
// document is never searched through.
constexpr int menuBarSearchDepth = 5;
constexpr int menuBarSearchNodes = 200;

struct Reference
{
    QString service;
    QDBusObjectPath path;
};

struct ActionEntry
{
    QString name;
    QString description;
    QString keyBinding;
};

const QDBusArgument& operator>>(const QDBusArgument& argument, Reference& reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const Reference& reference)
{
    argument.beginStructure();
    argument << reference.service << reference.path;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, ActionEntry& action)
{
    argument.beginStructure();
    argument >> action.name >> action.description >> action.keyBinding;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const ActionEntry& action)
{
    argument.beginStructure();
    argument << action.name << action.description << action.keyBinding;
    argument.endStructure();
    return argument;
}

// What a D-Bus failure means to the rules above.
int errorCode(const QDBusError& error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return AXError::cannotComplete;
    case QDBusError::ServiceUnknown:
    case QDBusError::UnknownObject:
    case QDBusError::Disconnected:
        return AXError::invalidElement;
    case QDBusError::UnknownMethod:
    case QDBusError::UnknownInterface:
    case QDBusError::UnknownProperty:
        return AXError::attributeUnsupported;
    default:
        return AXError::failure;
    }
}

// The process behind a connection of the accessibility bus.
QDBusMessage ownerPid(QDBusConnection connection, const QString& service, int timeoutMs)
{
    QDBusMessage ask = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    ask << service;
    return connection.call(ask, QDBus::Block, timeoutMs);
}

bool isPressName(const QString& name)
{
    const QString lower = name.toLower();
    return lower == u"press" || lower == u"click" || lower == u"activate";
}

} // namespace

Q_DECLARE_METATYPE(Reference)
Q_DECLARE_METATYPE(ActionEntry)

LinuxAccessibility::LinuxAccessibility()
    : m_connectionName(QStringLiteral("brenlow-a11y-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
    qDBusRegisterMetaType<Reference>();
    qDBusRegisterMetaType<QList<Reference>>();
    qDBusRegisterMetaType<ActionEntry>();
    qDBusRegisterMetaType<QList<ActionEntry>>();
}

LinuxAccessibility::~LinuxAccessibility()
{
    if (m_connected)
        QDBusConnection::disconnectFromBus(m_connectionName);
}

std::optional<QDBusConnection> LinuxAccessibility::bus()
{
    QMutexLocker lock(&m_mutex);
    if (m_connected) {
        QDBusConnection connection(m_connectionName);
        if (connection.isConnected())
            return connection;
        QDBusConnection::disconnectFromBus(m_connectionName);
        m_connected = false;
    }
    QDBusMessage ask =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusMessage address = QDBusConnection::sessionBus().call(ask, QDBus::Block, addressTimeoutMs);
    if (address.type() != QDBusMessage::ReplyMessage || address.arguments().isEmpty()) {
        qCInfo(lcPlatform) << "no accessibility bus:" << address.errorMessage();
        return std::nullopt;
    }
    QDBusConnection connection =
        QDBusConnection::connectToBus(address.arguments().constFirst().toString(), m_connectionName);
    if (!connection.isConnected()) {
        qCInfo(lcPlatform) << "accessibility bus not reachable:" << connection.lastError().message();
        QDBusConnection::disconnectFromBus(m_connectionName);
        return std::nullopt;
    }
    m_connected = true;
    return connection;
}

int LinuxAccessibility::call(const AXElement& element, const QString& interface, const QString& method,
                             const QVariantList& arguments, QDBusMessage& reply)
{
    if (element.isNull())
        return AXError::invalidElement;
    const auto connection = bus();
    if (!connection)
        return AXError::apiDisabled;
    QDBusMessage message = QDBusMessage::createMethodCall(element.service, element.path, interface, method);
    message.setArguments(arguments);
    ++m_calls;
    reply = connection->call(message, QDBus::Block, element.timeoutMs);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return AXError::success;
    return errorCode(QDBusError(reply));
}

int LinuxAccessibility::property(const AXElement& element, const QString& name, QVariant& value)
{
    QDBusMessage reply;
    const int error = call(element, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                           {accessibleInterface, name}, reply);
    if (error != AXError::success)
        return error;
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    value = reply.arguments().constFirst().value<QDBusVariant>().variant();
    return AXError::success;
}

int LinuxAccessibility::children(const AXElement& element, AXElementList& list)
{
    QDBusMessage reply;
    const int error = call(element, accessibleInterface, QStringLiteral("GetChildren"), {}, reply);
    if (error != AXError::success)
        return error;
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    const auto references = qdbus_cast<QList<Reference>>(reply.arguments().constFirst());
    list.clear();
    list.reserve(references.size());
    for (const Reference& reference : references) {
        // A null path is AT-SPI's "no object".
        if (reference.path.path() == u"/org/a11y/atspi/null")
            continue;
        list.append(AXElement{reference.service, reference.path.path(), element.timeoutMs});
    }
    return AXError::success;
}

int LinuxAccessibility::roleName(const AXElement& element, QString& role)
{
    QDBusMessage reply;
    const int error = call(element, accessibleInterface, QStringLiteral("GetRoleName"), {}, reply);
    if (error == AXError::success && !reply.arguments().isEmpty())
        role = reply.arguments().constFirst().toString();
    return error;
}

int LinuxAccessibility::actions(const AXElement& element, QList<Action>& list)
{
    QDBusMessage reply;
    const int error = call(element, actionInterface, QStringLiteral("GetActions"), {}, reply);
    if (error != AXError::success)
        return error;
    list.clear();
    if (reply.arguments().isEmpty())
        return AXError::success;
    for (const ActionEntry& entry : qdbus_cast<QList<ActionEntry>>(reply.arguments().constFirst()))
        list.append(Action{entry.name, entry.description, entry.keyBinding});
    return AXError::success;
}

int LinuxAccessibility::pressIndex(const QList<Action>& list)
{
    for (int i = 0; i < list.size(); ++i) {
        if (isPressName(list.at(i).name))
            return i;
    }
    return list.isEmpty() ? -1 : 0;
}

int LinuxAccessibility::shortcut(const AXElement& element, std::optional<MenuShortcut>& found)
{
    {
        QMutexLocker lock(&m_mutex);
        if (m_shortcutElement == element && !element.isNull()) {
            found = m_shortcut;
            return AXError::success;
        }
    }
    QList<Action> list;
    int error = actions(element, list);
    if (error != AXError::success)
        return error;
    const int index = pressIndex(list);
    found.reset();
    if (index >= 0) {
        // Qt leaves the bindings of GetActions empty; GetKeyBinding answers for both toolkits.
        QString binding = list.at(index).keyBinding;
        if (binding.isEmpty()) {
            QDBusMessage reply;
            error = call(element, actionInterface, QStringLiteral("GetKeyBinding"), {index}, reply);
            if (error != AXError::success)
                return error;
            if (!reply.arguments().isEmpty())
                binding = reply.arguments().constFirst().toString();
        }
        found = AtspiKeyBinding::parse(binding);
        if (found && binding.contains(u'+')) {
            QVariant name;
            if (property(element, QStringLiteral("Name"), name) == AXError::success &&
                AtspiKeyBinding::isMnemonic(*found, name.toString()))
                found.reset();
        }
    }
    QMutexLocker lock(&m_mutex);
    m_shortcutElement = element;
    m_shortcut = found;
    return AXError::success;
}

int LinuxAccessibility::menuBar(const AXElement& application, QVariant& value)
{
    // Breadth first, so the application's own menu bar is found before anything nested.
    std::deque<std::pair<AXElement, int>> pending{{application, 0}};
    int visited = 0;
    bool answered = false;
    int lastError = AXError::success;
    while (!pending.empty() && visited < menuBarSearchNodes) {
        const auto [element, depth] = pending.front();
        pending.pop_front();
        ++visited;
        AXElementList list;
        const int error = children(element, list);
        if (error != AXError::success) {
            // An application that does not answer at all is an error; a silent child is skipped.
            if (element == application || error == AXError::cannotComplete)
                return error;
            lastError = error;
            continue;
        }
        answered = true;
        for (const AXElement& child : list) {
            QString role;
            const int roleError = roleName(child, role);
            if (roleError == AXError::cannotComplete)
                return roleError;
            if (role == u"menu bar") {
                value = QVariant::fromValue(child);
                return AXError::success;
            }
            // Menus, documents and lists do not hold the window's menu bar.
            if (depth + 1 < menuBarSearchDepth && !role.contains(u"menu") && role != u"document text" &&
                role != u"text" && role != u"table" && role != u"tree table" && role != u"list")
                pending.emplace_back(child, depth + 1);
        }
    }
    Q_UNUSED(lastError)
    // Read without error but without a menu bar: no element, no error.
    return answered ? AXError::noValue : AXError::invalidElement;
}

int LinuxAccessibility::enabled(const AXElement& element, bool& on)
{
    QDBusMessage reply;
    const int error = call(element, accessibleInterface, QStringLiteral("GetState"), {}, reply);
    if (error != AXError::success)
        return error;
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    QList<uint> words;
    const QDBusArgument argument = reply.arguments().constFirst().value<QDBusArgument>();
    argument >> words;
    on = !words.isEmpty() && (words.constFirst() & (1u << stateEnabled));
    return AXError::success;
}

AXElement LinuxAccessibility::applicationElement(qint64 pid)
{
    AXElement root{registryService, rootPath, 1000};
    AXElementList applications;
    if (children(root, applications) != AXError::success)
        return {};
    const auto connection = bus();
    if (!connection)
        return {};
    for (const AXElement& application : applications) {
        ++m_calls;
        const QDBusMessage owner = ownerPid(*connection, application.service, root.timeoutMs);
        if (owner.type() == QDBusMessage::ReplyMessage && !owner.arguments().isEmpty() &&
            qint64(owner.arguments().constFirst().toUInt()) == pid)
            return AXElement{application.service, application.path};
    }
    return {};
}

int LinuxAccessibility::copyAttribute(const AXElement& element, const QString& attribute, QVariant& value)
{
    value.clear();
    if (attribute == u"AXMenuBar")
        return menuBar(element, value);
    if (attribute == u"AXTitle") {
        QVariant name;
        const int error = property(element, QStringLiteral("Name"), name);
        // GTK pads its menu titles with blanks.
        if (error == AXError::success)
            value = name.toString().trimmed();
        return error;
    }
    if (attribute == u"AXDescription")
        return property(element, QStringLiteral("Description"), value);
    if (attribute == u"AXChildren") {
        AXElementList list;
        const int error = children(element, list);
        if (error == AXError::success)
            value = QVariant::fromValue(list);
        return error;
    }
    if (attribute == u"AXMenuItemCmdChar" || attribute == u"AXMenuItemCmdModifiers") {
        std::optional<MenuShortcut> found;
        const int error = shortcut(element, found);
        if (error != AXError::success)
            return error;
        if (!found)
            return AXError::noValue;
        value = attribute == u"AXMenuItemCmdChar" ? QVariant(found->key) : QVariant(found->modifiers);
        return AXError::success;
    }
    if (attribute == u"AXEnabled") {
        bool on = false;
        const int error = enabled(element, on);
        if (error == AXError::success)
            value = on;
        return error;
    }
    return AXError::attributeUnsupported;
}

int LinuxAccessibility::processId(const AXElement& element, qint64& pid)
{
    if (element.isNull())
        return AXError::invalidElement;
    const auto connection = bus();
    if (!connection)
        return AXError::apiDisabled;
    ++m_calls;
    const QDBusMessage owner = ownerPid(*connection, element.service, element.timeoutMs);
    if (owner.type() != QDBusMessage::ReplyMessage)
        return errorCode(QDBusError(owner));
    if (owner.arguments().isEmpty())
        return AXError::noValue;
    pid = owner.arguments().constFirst().toUInt();
    return AXError::success;
}

int LinuxAccessibility::actionNames(const AXElement& element, QStringList& names)
{
    QList<Action> list;
    const int error = actions(element, list);
    if (error != AXError::success)
        return error;
    names.clear();
    const int press = pressIndex(list);
    for (int i = 0; i < list.size(); ++i)
        names.append(i == press ? QStringLiteral("AXPress") : list.at(i).name);
    return AXError::success;
}

int LinuxAccessibility::perform(const AXElement& element, const QString& action)
{
    QList<Action> list;
    int error = actions(element, list);
    if (error != AXError::success)
        return error;
    int index = -1;
    if (action == u"AXPress") {
        index = pressIndex(list);
    } else {
        for (int i = 0; i < list.size(); ++i) {
            if (list.at(i).name == action)
                index = i;
        }
    }
    if (index < 0)
        return AXError::actionUnsupported;
    QDBusMessage reply;
    error = call(element, actionInterface, QStringLiteral("DoAction"), {index}, reply);
    if (error != AXError::success)
        return error;
    const bool done = !reply.arguments().isEmpty() && reply.arguments().constFirst().toBool();
    return done ? AXError::success : AXError::failure;
}
