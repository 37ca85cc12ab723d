#include "platform/linux/SniHost.h"

#include "common/Log.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SniWatcher.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDateTime>
#include <QFile>
#include <QMutexLocker>
#include <QStandardPaths>

namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
constexpr int callTimeoutMs = 500;

QDBusMessage blockingCall(const QString& service, const QString& path, const QString& interface,
                          const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::Block, callTimeoutMs);
}

// The tool tip is (icon name, icon pixmaps, title, description).
void readToolTip(const QDBusArgument& argument, QString& title, QString& text)
{
    QString iconName;
    argument.beginStructure();
    argument >> iconName;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
    }
    argument.endArray();
    argument >> title >> text;
    argument.endStructure();
}

// The display name from the application's desktop entry: the German name where it has one.
QString desktopName(const QString& desktopId)
{
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopId);
    QFile file(path);
    if (path.isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    QString name;
    bool inEntry = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'['))
            inEntry = line == u"[Desktop Entry]";
        else if (inEntry && line.startsWith(QStringLiteral("Name[de]=")))
            return line.mid(9);
        else if (inEntry && name.isEmpty() && line.startsWith(QStringLiteral("Name=")))
            name = line.mid(5);
    }
    return name;
}

TrayMenuEntry readLayout(const QDBusArgument& argument, int depth)
{
    TrayMenuEntry entry;
    QVariantMap properties;
    argument.beginStructure();
    argument >> entry.id >> properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        // Menus deeper than this are not shown; they are still read to keep the stream in step.
        const TrayMenuEntry read = readLayout(child.variant().value<QDBusArgument>(), depth + 1);
        if (depth < 6)
            entry.children.append(read);
    }
    argument.endArray();
    argument.endStructure();
    entry.label = properties.value(QStringLiteral("label")).toString().remove(u'_');
    entry.enabled = properties.value(QStringLiteral("enabled"), true).toBool();
    entry.separator = properties.value(QStringLiteral("type")).toString() == u"separator";
    if (!properties.value(QStringLiteral("visible"), true).toBool())
        entry.id = -1;
    return entry;
}

} // namespace

SniHost::SniHost(QObject* parent) : QObject(parent) {}

SniHost::~SniHost()
{
    stop();
}

void SniHost::start()
{
    if (m_running)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    m_running = true;
    QDBusConnectionInterface* names = bus.interface();
    if (!names->isServiceRegistered(watcherService)) {
        // Nobody keeps the list: we do, so applications that need a tray find one.
        m_watcher = new SniWatcher(this);
        bus.registerObject(watcherPath, m_watcher, QDBusConnection::ExportAllContents);
        const auto reply = names->registerService(watcherService, QDBusConnectionInterface::DontQueueService,
                                                  QDBusConnectionInterface::DontAllowReplacement);
        if (!reply.isValid() || reply.value() != QDBusConnectionInterface::ServiceRegistered) {
            // Another program took the name meanwhile; it keeps it.
            bus.unregisterObject(watcherPath);
            delete m_watcher;
            m_watcher = nullptr;
        } else {
            connect(m_watcher, &SniWatcher::StatusNotifierItemRegistered, this, &SniHost::itemRegistered);
            connect(m_watcher, &SniWatcher::StatusNotifierItemUnregistered, this, &SniHost::itemUnregistered);
        }
    }
    if (!m_watcher) {
        bus.connect(watcherService, watcherPath, watcherService,
                    QStringLiteral("StatusNotifierItemRegistered"), this, SLOT(itemRegistered(QString)));
        bus.connect(watcherService, watcherPath, watcherService,
                    QStringLiteral("StatusNotifierItemUnregistered"), this, SLOT(itemUnregistered(QString)));
        m_hostName = QStringLiteral("org.kde.StatusNotifierHost-%1").arg(QCoreApplication::applicationPid());
        names->registerService(m_hostName);
        QDBusMessage host = QDBusMessage::createMethodCall(watcherService, watcherPath, watcherService,
                                                           QStringLiteral("RegisterStatusNotifierHost"));
        host << m_hostName;
        bus.asyncCall(host);
        const QDBusMessage list = blockingCall(
            watcherService, watcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("Get"), {watcherService, QStringLiteral("RegisteredStatusNotifierItems")});
        if (list.type() == QDBusMessage::ReplyMessage && !list.arguments().isEmpty())
            setRegistered(list.arguments().constFirst().value<QDBusVariant>().variant().toStringList());
    }
    // A changed title or tool tip is a new chance to read an unread counter.
    for (const char* signal : {"NewTitle", "NewToolTip", "NewStatus"})
        bus.connect(QString(), QString(), itemInterface, QString::fromLatin1(signal), this,
                    SLOT(itemChanged()));
}

void SniHost::stop()
{
    if (!m_running)
        return;
    m_running = false;
    QDBusConnection bus = QDBusConnection::sessionBus();
    for (const char* signal : {"NewTitle", "NewToolTip", "NewStatus"})
        bus.disconnect(QString(), QString(), itemInterface, QString::fromLatin1(signal), this,
                       SLOT(itemChanged()));
    if (m_watcher) {
        bus.unregisterService(watcherService);
        bus.unregisterObject(watcherPath);
        delete m_watcher;
        m_watcher = nullptr;
    } else {
        bus.disconnect(watcherService, watcherPath, watcherService,
                       QStringLiteral("StatusNotifierItemRegistered"), this, SLOT(itemRegistered(QString)));
        bus.disconnect(watcherService, watcherPath, watcherService,
                       QStringLiteral("StatusNotifierItemUnregistered"), this,
                       SLOT(itemUnregistered(QString)));
        if (!m_hostName.isEmpty())
            bus.unregisterService(m_hostName);
    }
    setRegistered({});
}

QStringList SniHost::registered() const
{
    QMutexLocker lock(&m_mutex);
    return m_registered;
}

void SniHost::setRegistered(QStringList items)
{
    {
        QMutexLocker lock(&m_mutex);
        if (items == m_registered)
            return;
        m_registered = std::move(items);
    }
    Q_EMIT changed();
}

void SniHost::itemRegistered(const QString& item)
{
    QStringList items = registered();
    if (!items.contains(item))
        items.append(item);
    setRegistered(items);
}

void SniHost::itemUnregistered(const QString& item)
{
    QStringList items = registered();
    items.removeAll(item);
    setRegistered(items);
}

void SniHost::itemChanged()
{
    Q_EMIT changed();
}

TrayItem SniHost::read(const QString& registration)
{
    TrayItem item;
    const qsizetype slash = registration.indexOf(u'/');
    item.service = slash < 0 ? registration : registration.left(slash);
    item.path = slash < 0 ? QStringLiteral("/StatusNotifierItem") : registration.mid(slash);
    const QDBusMessage reply =
        blockingCall(item.service, item.path, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("GetAll"), {itemInterface});
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
        item.service.clear();
        return item;
    }
    QVariantMap properties;
    reply.arguments().constFirst().value<QDBusArgument>() >> properties;
    item.itemId = properties.value(QStringLiteral("Id")).toString();
    if (properties.contains(QStringLiteral("Title")))
        item.title = properties.value(QStringLiteral("Title")).toString();
    if (properties.contains(QStringLiteral("ToolTip"))) {
        readToolTip(properties.value(QStringLiteral("ToolTip")).value<QDBusArgument>(), item.toolTipTitle,
                    item.toolTipText);
        // Present but empty stays present.
        if (item.toolTipTitle.isNull())
            item.toolTipTitle = QLatin1String("");
        if (item.toolTipText.isNull())
            item.toolTipText = QLatin1String("");
    }
    const QString menuPath = properties.value(QStringLiteral("Menu")).value<QDBusObjectPath>().path();
    item.hasMenu = !menuPath.isEmpty() && menuPath != u"/";
    const QDBusMessage owner = blockingCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"), {item.service});
    if (owner.type() == QDBusMessage::ReplyMessage && !owner.arguments().isEmpty())
        item.pid = owner.arguments().constFirst().toUInt();
    if (item.pid > 0) {
        const RunningApp app = LinuxWorkspace::describeProcess(item.pid);
        item.appId = app.id;
        item.appName = desktopName(app.id);
        if (item.appName.isEmpty())
            item.appName = app.name;
    }
    if (item.appId.isEmpty())
        item.appId = item.service;
    return item;
}

QList<TrayItem> SniHost::items()
{
    QList<TrayItem> list;
    const qint64 self = QCoreApplication::applicationPid();
    for (const QString& registration : registered()) {
        TrayItem item = read(registration);
        // Our own items are not other applications' items.
        if (!item.service.isEmpty() && item.pid != self)
            list.append(item);
    }
    return list;
}

bool SniHost::activate(const TrayItem& item)
{
    const QDBusMessage reply =
        blockingCall(item.service, item.path, itemInterface, QStringLiteral("Activate"), {0, 0});
    return reply.type() == QDBusMessage::ReplyMessage;
}

std::optional<QList<TrayMenuEntry>> SniHost::menu(const TrayItem& item)
{
    const QDBusMessage property =
        blockingCall(item.service, item.path, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("Get"), {itemInterface, QStringLiteral("Menu")});
    if (property.type() != QDBusMessage::ReplyMessage || property.arguments().isEmpty())
        return std::nullopt;
    const QString path =
        property.arguments().constFirst().value<QDBusVariant>().variant().value<QDBusObjectPath>().path();
    if (path.isEmpty() || path == u"/")
        return std::nullopt;
    blockingCall(item.service, path, menuInterface, QStringLiteral("AboutToShow"), {0});
    const QDBusMessage layout =
        blockingCall(item.service, path, menuInterface, QStringLiteral("GetLayout"), {0, -1, QStringList()});
    if (layout.type() != QDBusMessage::ReplyMessage || layout.arguments().size() < 2)
        return std::nullopt;
    const TrayMenuEntry root = readLayout(layout.arguments().at(1).value<QDBusArgument>(), 0);
    return root.children;
}

bool SniHost::click(const TrayItem& item, int entryId)
{
    const QDBusMessage property =
        blockingCall(item.service, item.path, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("Get"), {itemInterface, QStringLiteral("Menu")});
    if (property.type() != QDBusMessage::ReplyMessage || property.arguments().isEmpty())
        return false;
    const QString path =
        property.arguments().constFirst().value<QDBusVariant>().variant().value<QDBusObjectPath>().path();
    const QDBusMessage reply =
        blockingCall(item.service, path, menuInterface, QStringLiteral("Event"),
                     {entryId, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(0)),
                      uint(QDateTime::currentSecsSinceEpoch())});
    return reply.type() == QDBusMessage::ReplyMessage;
}
