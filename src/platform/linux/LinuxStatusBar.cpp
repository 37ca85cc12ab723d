#include "platform/linux/LinuxStatusBar.h"

#include "platform/linux/SniHost.h"

#include <QApplication>
#include <QFont>
#include <QIcon>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QSystemTrayIcon>

namespace {
// A tray icon drawn from one character, so the group's items read as an arrow and a bar.
QIcon glyphIcon(QChar glyph)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QFont font = QApplication::font();
    font.setPixelSize(26);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, QString(glyph));
    return QIcon(pixmap);
}
} // namespace

LinuxStatusBar::LinuxStatusBar(QObject* parent) : StatusBar(parent), m_host(new SniHost(this))
{
    connect(m_host, &SniHost::changed, this, &StatusBar::trayItemsChanged);
}

LinuxStatusBar::~LinuxStatusBar()
{
    showGroupItems(false);
    delete m_icon;
    delete m_menu;
}

void LinuxStatusBar::showGroupItems(bool on)
{
    if (!on) {
        delete m_separator;
        delete m_arrow;
        m_separator = nullptr;
        m_arrow = nullptr;
        m_separatorLength = 0;
        return;
    }
    if (m_arrow)
        return;
    m_arrow = new QSystemTrayIcon(glyphIcon(QChar(0x2039)));
    m_arrow->setToolTip(QStringLiteral("Brenlow: Menüleisten-Gruppe ein-/ausblenden"));
    connect(m_arrow, &QSystemTrayIcon::activated, this, &StatusBar::groupArrowClicked);
    m_arrow->show();
    m_separator = new QSystemTrayIcon(glyphIcon(QChar(0x2502)));
    m_separator->setToolTip(QStringLiteral("Gewünschte Symbole mit ⌘ links hierhin ziehen"));
    connect(m_separator, &QSystemTrayIcon::activated, this, &StatusBar::groupSeparatorClicked);
    m_separator->show();
    m_separatorLength = 12;
}

void LinuxStatusBar::startHost()
{
    m_host->start();
}

void LinuxStatusBar::stopHost()
{
    m_host->stop();
}

QList<TrayItem> LinuxStatusBar::trayItems()
{
    return m_host->items();
}

bool LinuxStatusBar::activateItem(const TrayItem& item)
{
    return m_host->activate(item);
}

std::optional<QList<TrayMenuEntry>> LinuxStatusBar::itemMenu(const TrayItem& item)
{
    return m_host->menu(item);
}

bool LinuxStatusBar::clickMenuEntry(const TrayItem& item, int entryId)
{
    return m_host->click(item, entryId);
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
