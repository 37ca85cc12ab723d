#include "platform/linux/LinuxSharing.h"

#include "common/Log.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>

#include <memory>

namespace {

// A share that is still running when KDE Connect stops answering ends with its error instead of
// holding the panel open.
constexpr int callTimeoutMs = 10000;

QString devicePath(const QString& device)
{
    return QStringLiteral("/modules/kdeconnect/devices/") + device + QStringLiteral("/share");
}

} // namespace

LinuxSharing::LinuxSharing(QDBusConnection bus) : m_bus(std::move(bus)) {}

void LinuxSharing::share(const QList<QUrl>& files, QObject* context, Answer answer)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QString::fromLatin1(service), QStringLiteral("/modules/kdeconnect"),
        QStringLiteral("org.kde.kdeconnect.daemon"), QStringLiteral("devices"));
    // Only devices that are paired and reachable right now can take files.
    call << true << true;
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, callTimeoutMs), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [this, watcher, files, context, answer](QDBusPendingCallWatcher*) {
                         watcher->deleteLater();
                         const QDBusPendingReply<QStringList> reply = *watcher;
                         if (reply.isError() || reply.value().isEmpty()) {
                             if (reply.isError())
                                 qCInfo(lcPlatform)
                                     << "KDE Connect not available:" << reply.error().message();
                             answer(SharingResult{SharingResult::unavailable, {}});
                             return;
                         }
                         sendTo(reply.value().first(), files, context, answer);
                     });
}

void LinuxSharing::sendTo(const QString& device, const QList<QUrl>& files, QObject* context, Answer answer)
{
    // One call per file; the answer comes when the last one has replied, with the first error.
    struct Progress
    {
        int open = 0;
        QString error;
    };
    auto progress = std::make_shared<Progress>();
    progress->open = int(files.size());
    for (const QUrl& file : files) {
        QDBusMessage call = QDBusMessage::createMethodCall(QString::fromLatin1(service), devicePath(device),
                                                           QStringLiteral("org.kde.kdeconnect.device.share"),
                                                           QStringLiteral("shareUrl"));
        call << file.toString(QUrl::FullyEncoded);
        auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call, callTimeoutMs), context);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                         [watcher, progress, answer](QDBusPendingCallWatcher*) {
                             watcher->deleteLater();
                             if (watcher->isError() && progress->error.isEmpty())
                                 progress->error = watcher->error().message();
                             if (--progress->open > 0)
                                 return;
                             if (progress->error.isEmpty())
                                 answer(SharingResult{SharingResult::shared, {}});
                             else
                                 answer(SharingResult{SharingResult::failed, progress->error});
                         });
    }
}
