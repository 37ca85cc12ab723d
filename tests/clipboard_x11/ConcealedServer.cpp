#include "ConcealedServer.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <cstdio>

namespace {

// Reports every read of its data, so the test can tell that no one asked for the secret.
class ReportingMimeData : public QMimeData
{
protected:
    QVariant retrieveData(const QString& type, QMetaType preferredType) const override
    {
        std::printf("asked: %s\n", type.toUtf8().constData());
        std::fflush(stdout);
        return QMimeData::retrieveData(type, preferredType);
    }
};

} // namespace

int serveConcealed(const QString& text)
{
    auto* mime = new ReportingMimeData;
    mime->setText(text);
    mime->setData(QStringLiteral("x-kde-passwordManagerHint"), QByteArrayLiteral("secret"));
    QGuiApplication::clipboard()->setMimeData(mime, QClipboard::Clipboard);
    std::printf("serving\n");
    std::fflush(stdout);
    return QGuiApplication::exec();
}
