#pragma once

#include "platform/Displays.h"
#include "platform/HotKeys.h"
#include "platform/KeyMonitor.h"
#include "platform/Pasteboard.h"
#include "platform/Permissions.h"
#include "platform/Pointer.h"
#include "platform/Sound.h"
#include "platform/StatusBar.h"
#include "platform/Workspace.h"

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QStringList>
#include <QWaitCondition>

#include <atomic>

// In-memory services that keep state and answer as the real ones would.

class MemoryPasteboard final : public Pasteboard
{
    Q_OBJECT
public:
    explicit MemoryPasteboard(QString name = {}, QObject* parent = nullptr);
    const QString& name() const { return m_name; }

    qint64 changeCount() const override { return m_changeCount; }
    QStringList types() const override { return m_types; }
    std::optional<QString> string() const override { return m_text; }
    void clearAndWriteString(const QString& text) override;

    // Another application copies: text (or nothing) with extra types such as concealedType().
    void copyFromOutside(std::optional<QString> text, const QStringList& extraTypes = {});
    // Another application copies but never hands the content over: a change with the types it
    // named and no text.
    void copyFromUnresponsiveOwner(const QStringList& types = {});

private:
    QString m_name;
    qint64 m_changeCount = 0;
    QStringList m_types;
    std::optional<QString> m_text;
};

// The two blocking checks run on a worker thread while tests change the answers, so what they
// read is atomic or behind a lock.
class MemoryPermissions final : public Permissions
{
public:
    bool accessibilityTrusted(bool prompt) const override;
    bool accessibilityTrustedNow() const override;
    bool screenCaptureAllowed() const override { return screenCapture; }
    bool requestScreenCapture() override;
    AutomationAccess automationAccess(const QString& appId) const override;

    void setAutomation(const QString& appId, AutomationAccess access);
    // How many blocking trust reads and automation checks have run.
    int trustReads() const { return m_trustReads; }
    int automationChecks() const { return m_checks; }
    // Holds the automation checks until release(), so a test can look at a check in progress
    // (whose trust read has already happened).
    void hold();
    void release();

    mutable std::atomic<bool> accessibility = false;
    bool screenCapture = false;
    bool grantScreenCaptureOnRequest = false;
    // Asking with the prompt grants trust, as switching the desktop's accessibility on does.
    bool grantAccessibilityOnPrompt = false;
    mutable int promptCount = 0;

private:
    void waitWhileHeld() const;

    mutable QMutex m_mutex;
    mutable QWaitCondition m_released;
    bool m_held = false;
    QHash<QString, AutomationAccess> m_automation;
    mutable std::atomic<int> m_checks = 0;
    mutable std::atomic<int> m_trustReads = 0;
};

class MemorySound final : public Sound
{
public:
    void play(const QString& name) override { played.append(name); }
    QStringList played;
};

class MemoryWorkspace final : public Workspace
{
public:
    std::optional<RunningApp> frontmostApp() const override { return frontmost; }
    qint64 currentPid() const override { return 4242; }
    bool open(const QString& path) override;
    bool reveal(const QString& path) override;
    bool relaunch() override;
    void terminate() override { ++terminations; }
    std::optional<RunningApp> runningApp(qint64 pid) const override;
    // Makes the running application with this pid frontmost, unless activation is refused.
    bool activate(qint64 pid) override;

    std::optional<RunningApp> frontmost;
    // Other running applications by pid (the frontmost one counts as running too).
    QHash<qint64, RunningApp> running;
    bool refuseActivation = false;
    // Paths that exist and open; everything else fails.
    QSet<QString> openable;
    QStringList opened;
    // Without a file manager a reveal fails.
    bool revealWorks = true;
    QStringList revealed;
    // Without a shell the relaunch fails.
    bool relaunchWorks = true;
    int relaunches = 0;
    int terminations = 0;
};

class MemoryDisplays final : public Displays
{
    Q_OBJECT
public:
    MemoryDisplays();
    QList<DisplayInfo> displays() const override { return list; }
    std::optional<int> focusedDisplay() const override { return focused; }
    bool reduceMotion() const override { return reduceMotionOn; }
    void change() { Q_EMIT configurationChanged(); }

    QList<DisplayInfo> list;
    std::optional<int> focused = 0;
    bool reduceMotionOn = false;
};

class MemoryPointer final : public Pointer
{
    Q_OBJECT
public:
    QPointF position() const override { return m_position; }
    bool buttonsPressed() const override { return pressed; }
    void setWatching(bool on) override { watching = on; }
    void moveTo(QPointF position);

    bool pressed = false;
    bool watching = false;

private:
    QPointF m_position{5, 500};
};

class MemoryHotKeys final : public HotKeys
{
    Q_OBJECT
public:
    bool registerHotKey(int keyCode, KeyModifiers modifiers) override;
    void unregisterHotKey() override { registered.reset(); }
    void press() { Q_EMIT pressed(); }

    // Combinations held by other applications.
    QList<KeyModifiers> taken;
    std::optional<KeyModifiers> registered;
};

class MemoryKeyMonitor final : public KeyMonitor
{
    Q_OBJECT
public:
    void start() override { running = true; }
    void stop() override { running = false; }
    void emitKeyDown(int keyCode, KeyModifiers modifiers) { Q_EMIT keyDown(keyCode, modifiers); }
    void emitModifiers(KeyModifiers modifiers) { Q_EMIT modifiersChanged(modifiers); }
    bool running = false;
};

class MemoryStatusBar final : public StatusBar
{
    Q_OBJECT
public:
    void show(const QString& symbol, const QString& title) override;
    void hide() override { visible = false; }
    void click() { Q_EMIT activated(); }
    void setStopEntry(const QString& title, bool visible) override
    {
        stopTitle = title;
        stopVisible = visible;
    }
    // The user picks the stop entry; false when it is not shown.
    bool clickStop()
    {
        if (!stopVisible)
            return false;
        Q_EMIT stopRequested();
        return true;
    }
    bool visible = false;
    QString title;
    QString stopTitle;
    bool stopVisible = false;

    void showGroupItems(bool on) override;
    bool groupItemsShown() const override { return m_groupShown; }
    void setSeparatorLength(double length) override { m_separatorLength = length; }
    double separatorLength() const override { return m_separatorLength; }
    std::optional<double> separatorLeftEdge() const override;
    bool supportsHiding() const override { return hidingSupported; }
    void startHost() override { hosting = true; }
    void stopHost() override { hosting = false; }
    QList<TrayItem> trayItems() override;
    bool activateItem(const TrayItem& item) override;
    std::optional<QList<TrayMenuEntry>> itemMenu(const TrayItem& item) override;
    bool clickMenuEntry(const TrayItem& item, int entryId) override;

    // Other applications' items; a change announces itself as the host would.
    void setItems(const QList<TrayItem>& items);
    void setMenu(const QString& service, const QList<TrayMenuEntry>& menu);
    QStringList activations() const;
    QStringList clicks() const;
    int scans() const;

    bool hidingSupported = true;
    bool hosting = false;
    // Where the separator's window starts while shown.
    double separatorEdge = 900;

private:
    mutable QMutex m_mutex;
    QList<TrayItem> m_items;
    QHash<QString, QList<TrayMenuEntry>> m_menus;
    QStringList m_activations;
    QStringList m_clicks;
    int m_scans = 0;
    bool m_groupShown = false;
    double m_separatorLength = 0;
};
