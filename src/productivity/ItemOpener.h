#pragma once

#include <QObject>
#include <QUrl>

class StatusMessage;
class Workspace;

// Opens and reveals the items of the shelf and the search, and says in the status line when
// that did not work.
class ItemOpener : public QObject
{
    Q_OBJECT
public:
    ItemOpener(Workspace& workspace, StatusMessage& message, QObject* parent = nullptr);

    // A file that is gone says so by name; one the desktop refuses says that it did not open.
    bool open(const QUrl& url);
    bool reveal(const QUrl& url);

private:
    Workspace& m_workspace;
    StatusMessage& m_message;
};
