#pragma once

#include "platform/TrayItems.h"

#include <QObject>
#include <QString>

#include <optional>

// Our own status item (tray icon), the menu-bar group's two items, and the other applications'
// status items.
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

    // The menu-bar group: the arrow and the separator, created arrow first; removed when off.
    virtual void showGroupItems(bool on) = 0;
    virtual bool groupItemsShown() const = 0;
    // The separator's length in points; a long separator pushes the items left of it off screen
    // where the platform supports it.
    virtual void setSeparatorLength(double length) = 0;
    virtual double separatorLength() const = 0;
    // The left edge of the separator's window, when it has one.
    virtual std::optional<double> separatorLeftEdge() const = 0;
    // Whether pushing other items off screen is possible here at all.
    virtual bool supportsHiding() const = 0;

    // Starts listening to other applications' items (and hosts them when nobody else does).
    virtual void startHost() = 0;
    virtual void stopHost() = 0;
    // The items registered now. Blocking: for a worker thread.
    virtual QList<TrayItem> trayItems() = 0;
    // Activates an item as a click would; false when it did not answer. Blocking.
    virtual bool activateItem(const TrayItem& item) = 0;
    // The item's own menu; nothing when it has none or did not answer. Blocking.
    virtual std::optional<QList<TrayMenuEntry>> itemMenu(const TrayItem& item) = 0;
    // Runs an entry of the item's menu; false when it did not answer. Blocking.
    virtual bool clickMenuEntry(const TrayItem& item, int entryId) = 0;

Q_SIGNALS:
    void activated();
    void quitRequested();
    void groupArrowClicked();
    void groupSeparatorClicked();
    // An item came, went, or changed its title or tool tip.
    void trayItemsChanged();
    void stopRequested();
};
