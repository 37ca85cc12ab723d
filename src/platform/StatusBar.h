#pragma once

#include <QObject>
#include <QString>

// Our own status item (tray icon).
class StatusBar : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // Shows the item with a symbol name and accessible title; `activated` fires on a click.
    virtual void show(const QString& symbol, const QString& title) = 0;
    virtual void hide() = 0;
    // An entry of the item's menu that ends what is running (a screen recording): shown with
    // `title` while `visible`; stopRequested() on a click.
    virtual void setStopEntry(const QString& title, bool visible) = 0;

Q_SIGNALS:
    void activated();
    void quitRequested();
    void stopRequested();
};
