#include "platform/linux/LinuxStatusBar.h"

#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

LinuxStatusBar::LinuxStatusBar(QObject* parent) : StatusBar(parent) {}

LinuxStatusBar::~LinuxStatusBar()
{
    delete m_icon;
    delete m_menu;
}

void LinuxStatusBar::show(const QString& symbol, const QString& title)
{
    // The symbol names a macOS glyph; the tray shows the application's own icon instead.
    Q_UNUSED(symbol)
    if (!m_icon) {
        m_menu = new QMenu;
        m_stop = m_menu->addAction(m_stopTitle);
        m_stop->setVisible(m_stopVisible);
        connect(m_stop, &QAction::triggered, this, &StatusBar::stopRequested);
        QAction* quit = m_menu->addAction(QStringLiteral("Brenlow beenden"));
        connect(quit, &QAction::triggered, this, &StatusBar::quitRequested);
        m_icon = new QSystemTrayIcon(QIcon(QStringLiteral(":/brenlow/brenlow.svg")), this);
        m_icon->setContextMenu(m_menu);
        connect(m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                Q_EMIT activated();
        });
    }
    m_icon->setToolTip(title);
    m_icon->show();
}

void LinuxStatusBar::hide()
{
    if (m_icon)
        m_icon->hide();
}

void LinuxStatusBar::setStopEntry(const QString& title, bool visible)
{
    // Remembered for an item that is shown later.
    m_stopTitle = title;
    m_stopVisible = visible;
    if (!m_stop)
        return;
    m_stop->setText(title);
    m_stop->setVisible(visible);
}
