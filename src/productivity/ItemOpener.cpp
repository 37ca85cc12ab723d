#include "productivity/ItemOpener.h"

#include "common/Log.h"
#include "common/StatusMessage.h"
#include "platform/Workspace.h"
#include "productivity/ShelfTexts.h"

#include <QFileInfo>

ItemOpener::ItemOpener(Workspace& workspace, StatusMessage& message, QObject* parent)
    : QObject(parent), m_workspace(workspace), m_message(message)
{}

bool ItemOpener::open(const QUrl& url)
{
    const QString path = url.toLocalFile();
    if (!QFileInfo::exists(path)) {
        m_message.setText(ShelfTexts::itemGone(ShelfTexts::itemName(url)));
        return false;
    }
    if (m_workspace.open(path))
        return true;
    qCInfo(lcProductivity) << "the desktop did not open" << path;
    m_message.setText(ShelfTexts::notOpened());
    return false;
}

bool ItemOpener::reveal(const QUrl& url)
{
    const QString path = url.toLocalFile();
    if (!QFileInfo::exists(path)) {
        m_message.setText(ShelfTexts::itemGone(ShelfTexts::itemName(url)));
        return false;
    }
    if (m_workspace.reveal(path))
        return true;
    m_message.setText(ShelfTexts::notRevealed());
    return false;
}
