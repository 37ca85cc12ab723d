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

// Asks for the process behind a connection of the accessibility bus.
QDBusPendingCall ownerPid(const QDBusConnection& connection, const QString& service, int timeoutMs)
{
    QDBusMessage ask = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    ask << service;
    return connection.asyncCall(ask, timeoutMs);
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

QDBusPendingCall LinuxAccessibility::send(const QDBusConnection& connection, const AXElement& element,
                                          const QString& interface, const QString& method,
                                          const QVariantList& arguments)
{
    if (element.isNull())
        return QDBusPendingCall::fromError(
            QDBusError(QDBusError::UnknownObject, QStringLiteral("no element")));
    QDBusMessage message = QDBusMessage::createMethodCall(element.service, element.path, interface, method);
    message.setArguments(arguments);
    ++m_calls;
    return connection.asyncCall(message, element.timeoutMs);
}

QDBusPendingCall LinuxAccessibility::sendProperty(const QDBusConnection& connection, const AXElement& element,
                                                  const QString& name)
{
    return send(connection, element, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                {accessibleInterface, name});
}

int LinuxAccessibility::await(QDBusPendingCall& pending, QDBusMessage& reply)
{
    pending.waitForFinished();
    reply = pending.reply();
    if (reply.type() == QDBusMessage::ReplyMessage)
        return AXError::success;
    return errorCode(QDBusError(reply));
}

int LinuxAccessibility::call(const AXElement& element, const QString& interface, const QString& method,
                             const QVariantList& arguments, QDBusMessage& reply)
{
    if (element.isNull())
        return AXError::invalidElement;
    const auto connection = bus();
    if (!connection)
        return AXError::apiDisabled;
    QDBusPendingCall pending = send(*connection, element, interface, method, arguments);
    return await(pending, reply);
}

int LinuxAccessibility::propertyValue(const QDBusMessage& reply, QVariant& value)
{
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    value = reply.arguments().constFirst().value<QDBusVariant>().variant();
    return AXError::success;
}

int LinuxAccessibility::property(const AXElement& element, const QString& name, QVariant& value)
{
    QDBusMessage reply;
    const int error = call(element, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                           {accessibleInterface, name}, reply);
    return error == AXError::success ? propertyValue(reply, value) : error;
}

int LinuxAccessibility::childList(const AXElement& parent, const QDBusMessage& reply, AXElementList& list)
{
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    const auto references = qdbus_cast<QList<Reference>>(reply.arguments().constFirst());
    list.clear();
    list.reserve(references.size());
    for (const Reference& reference : references) {
        // A null path is AT-SPI's "no object".
        if (reference.path.path() == u"/org/a11y/atspi/null")
            continue;
        list.append(AXElement{reference.service, reference.path.path(), parent.timeoutMs});
    }
    return AXError::success;
}

int LinuxAccessibility::children(const AXElement& element, AXElementList& list)
{
    QDBusMessage reply;
    const int error = call(element, accessibleInterface, QStringLiteral("GetChildren"), {}, reply);
    return error == AXError::success ? childList(element, reply, list) : error;
}

int LinuxAccessibility::actionList(const QDBusMessage& reply, QList<Action>& list)
{
    list.clear();
    if (reply.arguments().isEmpty())
        return AXError::success;
    for (const ActionEntry& entry : qdbus_cast<QList<ActionEntry>>(reply.arguments().constFirst()))
        list.append(Action{entry.name, entry.description, entry.keyBinding});
    return AXError::success;
}

int LinuxAccessibility::actions(const AXElement& element, QList<Action>& list)
{
    QDBusMessage reply;
    const int error = call(element, actionInterface, QStringLiteral("GetActions"), {}, reply);
    return error == AXError::success ? actionList(reply, list) : error;
}

int LinuxAccessibility::enabledState(const QDBusMessage& reply, bool& on)
{
    if (reply.arguments().isEmpty())
        return AXError::noValue;
    QList<uint> words;
    const QDBusArgument argument = reply.arguments().constFirst().value<QDBusArgument>();
    argument >> words;
    on = !words.isEmpty() && (words.constFirst() & (1u << stateEnabled));
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

std::optional<MenuShortcut> LinuxAccessibility::shortcutOf(const QString& binding,
                                                           const std::optional<QString>& title)
{
    std::optional<MenuShortcut> found = AtspiKeyBinding::parse(binding);
    if (found && binding.contains(u'+') && title && AtspiKeyBinding::isMnemonic(*found, *title))
        found.reset();
    return found;
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
        std::optional<QString> title;
        if (binding.contains(u'+')) {
            QVariant name;
            if (property(element, QStringLiteral("Name"), name) == AXError::success)
                title = name.toString();
        }
        found = shortcutOf(binding, title);
    }
    QMutexLocker lock(&m_mutex);
    m_shortcutElement = element;
    m_shortcut = found;
    return AXError::success;
}

int LinuxAccessibility::menuBar(const AXElement& application, QVariant& value)
{
    // Breadth first, so the application's own menu bar is found before anything nested. A level's
    // listings go out together, then the roles of everything they list; the answers are looked at
    // in the order a one-by-one search would have met them.
    const auto connection = bus();
    if (!connection)
        return AXError::apiDisabled;
    AXElementList level{application};
    int visited = 0;
    bool answered = false;
    for (int depth = 0; !level.isEmpty() && visited < menuBarSearchNodes; ++depth) {
        level = level.mid(0, menuBarSearchNodes - visited);
        visited += int(level.size());
        QList<QDBusPendingCall> listings;
        for (const AXElement& element : level)
            listings.append(send(*connection, element, accessibleInterface, QStringLiteral("GetChildren")));
        QList<AXElementList> lists(level.size());
        QList<int> listErrors(level.size());
        QList<QDBusPendingCall> roles;
        for (qsizetype i = 0; i < level.size(); ++i) {
            QDBusMessage reply;
            listErrors[i] = await(listings[i], reply);
            if (listErrors.at(i) == AXError::success)
                listErrors[i] = childList(level.at(i), reply, lists[i]);
            for (const AXElement& child : std::as_const(lists.at(i)))
                roles.append(send(*connection, child, accessibleInterface, QStringLiteral("GetRoleName")));
        }
        AXElementList next;
        qsizetype roleIndex = 0;
        for (qsizetype i = 0; i < level.size(); ++i) {
            const int error = listErrors.at(i);
            if (error != AXError::success) {
                // An application that does not answer at all is an error; a silent child is skipped.
                if (level.at(i) == application || error == AXError::cannotComplete)
                    return error;
                continue;
            }
            answered = true;
            for (const AXElement& child : std::as_const(lists.at(i))) {
                QDBusMessage reply;
                const int roleError = await(roles[roleIndex++], reply);
                if (roleError == AXError::cannotComplete)
                    return roleError;
                const QString role = roleError == AXError::success && !reply.arguments().isEmpty()
                                         ? reply.arguments().constFirst().toString()
                                         : QString();
                if (role == u"menu bar") {
                    value = QVariant::fromValue(child);
                    return AXError::success;
                }
                // Menus, documents and lists do not hold the window's menu bar.
                if (depth + 1 < menuBarSearchDepth && !role.contains(u"menu") && role != u"document text" &&
                    role != u"text" && role != u"table" && role != u"tree table" && role != u"list")
                    next.append(child);
            }
        }
        level = next;
    }
    // Read without error but without a menu bar: no element, no error.
    return answered ? AXError::noValue : AXError::invalidElement;
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
    QList<QDBusPendingCall> owners;
    for (const AXElement& application : std::as_const(applications)) {
        ++m_calls;
        owners.append(ownerPid(*connection, application.service, root.timeoutMs));
    }
    for (qsizetype i = 0; i < applications.size(); ++i) {
        QDBusMessage owner;
        if (await(owners[i], owner) == AXError::success && !owner.arguments().isEmpty() &&
            qint64(owner.arguments().constFirst().toUInt()) == pid)
            return AXElement{applications.at(i).service, applications.at(i).path};
    }
    return {};
}

QList<QVariantMap> LinuxAccessibility::copyAttributes(const AXElementList& elements,
                                                      const QStringList& attributes,
                                                      const std::function<bool()>& stop)
{
    const QString titleName = QStringLiteral("AXTitle");
    const QString descriptionName = QStringLiteral("AXDescription");
    const QString childrenName = QStringLiteral("AXChildren");
    const QString keyName = QStringLiteral("AXMenuItemCmdChar");
    const QString modifiersName = QStringLiteral("AXMenuItemCmdModifiers");
    const QString enabledName = QStringLiteral("AXEnabled");
    const bool wantTitle = attributes.contains(titleName);
    const bool wantDescription = attributes.contains(descriptionName);
    const bool wantChildren = attributes.contains(childrenName);
    const bool wantKey = attributes.contains(keyName);
    const bool wantModifiers = attributes.contains(modifiersName);
    const bool wantShortcut = wantKey || wantModifiers;
    const bool wantEnabled = attributes.contains(enabledName);
    QStringList others = attributes;
    others.removeIf([&](const QString& attribute) {
        return attribute == titleName || attribute == descriptionName || attribute == childrenName ||
               attribute == keyName || attribute == modifiersName || attribute == enabledName;
    });

    QList<QVariantMap> values(elements.size());
    if (elements.isEmpty() || stop())
        return values;
    const auto connection = bus();
    if (!connection)
        return readOneByOne(elements, others, stop, values);

    // Every element's name, children and state, all sent before any answer is read.
    struct Calls
    {
        std::optional<QDBusPendingCall> name, description, children, state;
    };
    QList<Calls> calls;
    calls.reserve(elements.size());
    for (const AXElement& element : elements) {
        Calls sent;
        if (wantTitle || wantShortcut)
            sent.name = sendProperty(*connection, element, QStringLiteral("Name"));
        if (wantDescription)
            sent.description = sendProperty(*connection, element, QStringLiteral("Description"));
        if (wantChildren)
            sent.children = send(*connection, element, accessibleInterface, QStringLiteral("GetChildren"));
        if (wantEnabled)
            sent.state = send(*connection, element, accessibleInterface, QStringLiteral("GetState"));
        calls.append(sent);
    }
    QList<PressRead> presses(elements.size());
    for (qsizetype i = 0; i < elements.size(); ++i) {
        Calls& sent = calls[i];
        QVariantMap& map = values[i];
        QDBusMessage reply;
        QVariant value;
        if (sent.name && await(*sent.name, reply) == AXError::success &&
            propertyValue(reply, value) == AXError::success) {
            presses[i].title = value.toString();
            // GTK pads its menu titles with blanks.
            if (wantTitle)
                map.insert(titleName, value.toString().trimmed());
        }
        if (sent.description && await(*sent.description, reply) == AXError::success &&
            propertyValue(reply, value) == AXError::success)
            map.insert(descriptionName, value);
        AXElementList list;
        if (sent.children && await(*sent.children, reply) == AXError::success &&
            childList(elements.at(i), reply, list) == AXError::success)
            map.insert(childrenName, QVariant::fromValue(list));
        // An element whose children could not be read still gets its shortcut read.
        presses[i].leaf = list.isEmpty();
        bool on = false;
        if (sent.state && await(*sent.state, reply) == AXError::success &&
            enabledState(reply, on) == AXError::success)
            map.insert(enabledName, on);
    }
    if (wantShortcut && !stop())
        readShortcuts(*connection, elements, presses, stop);
    for (qsizetype i = 0; i < elements.size(); ++i) {
        if (!presses.at(i).shortcut)
            continue;
        if (wantKey)
            values[i].insert(keyName, presses.at(i).shortcut->key);
        if (wantModifiers)
            values[i].insert(modifiersName, presses.at(i).shortcut->modifiers);
    }
    return readOneByOne(elements, others, stop, values);
}

void LinuxAccessibility::readShortcuts(const QDBusConnection& connection, const AXElementList& elements,
                                       QList<PressRead>& presses, const std::function<bool()>& stop)
{
    // The leaves' actions, then the bindings GetActions left empty (Qt leaves them all empty).
    QList<std::optional<QDBusPendingCall>> pending(elements.size());
    for (qsizetype i = 0; i < elements.size(); ++i) {
        if (presses.at(i).leaf)
            pending[i] = send(connection, elements.at(i), actionInterface, QStringLiteral("GetActions"));
    }
    for (qsizetype i = 0; i < elements.size(); ++i) {
        QDBusMessage reply;
        QList<Action> list;
        if (pending[i] && await(*pending[i], reply) == AXError::success &&
            actionList(reply, list) == AXError::success) {
            presses[i].index = pressIndex(list);
            if (presses[i].index >= 0)
                presses[i].binding = list.at(presses[i].index).keyBinding;
        }
        pending[i].reset();
    }
    if (stop())
        return;
    for (qsizetype i = 0; i < elements.size(); ++i) {
        if (presses.at(i).index >= 0 && presses.at(i).binding.isEmpty())
            pending[i] = send(connection, elements.at(i), actionInterface, QStringLiteral("GetKeyBinding"),
                              {presses.at(i).index});
    }
    for (qsizetype i = 0; i < elements.size(); ++i) {
        PressRead& press = presses[i];
        QDBusMessage reply;
        if (pending[i]) {
            if (await(*pending[i], reply) != AXError::success)
                continue;
            if (!reply.arguments().isEmpty())
                press.binding = reply.arguments().constFirst().toString();
        }
        if (press.index >= 0)
            press.shortcut = shortcutOf(press.binding, press.title);
    }
}

QList<QVariantMap> LinuxAccessibility::readOneByOne(const AXElementList& elements,
                                                    const QStringList& attributes,
                                                    const std::function<bool()>& stop,
                                                    QList<QVariantMap>& values)
{
    if (attributes.isEmpty())
        return values;
    // The attributes no batch knows go through the plain one-by-one reading.
    const QList<QVariantMap> read = Accessibility::copyAttributes(elements, attributes, stop);
    for (qsizetype i = 0; i < read.size(); ++i)
        values[i].insert(read.at(i));
    return values;
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
        QDBusMessage reply;
        bool on = false;
        int error = call(element, accessibleInterface, QStringLiteral("GetState"), {}, reply);
        if (error == AXError::success)
            error = enabledState(reply, on);
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
    QDBusPendingCall pending = ownerPid(*connection, element.service, element.timeoutMs);
    QDBusMessage owner;
    const int error = await(pending, owner);
    if (error != AXError::success)
        return error;
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
