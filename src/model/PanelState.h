#pragma once

#include "model/Page.h"

#include <QObject>
#include <QString>

#include <algorithm>

class Defaults;

// What the open or closed panel is doing: its page, whether it is open, pinned or glowing, the
// measured notch, the settings section and the hot key's status. Main thread only.
class PanelState : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Page page READ page WRITE setPage NOTIFY pageChanged)
    Q_PROPERTY(bool expanded READ expanded WRITE setExpanded NOTIFY expandedChanged)
    Q_PROPERTY(bool introActive READ introActive WRITE setIntroActive NOTIFY introActiveChanged)
    Q_PROPERTY(bool panelPinned READ panelPinned WRITE setPanelPinned NOTIFY panelPinnedChanged)
    Q_PROPERTY(double notchWidth READ notchWidth WRITE setNotchWidth NOTIFY notchWidthChanged)
    Q_PROPERTY(double notchHeight READ notchHeight WRITE setNotchHeight NOTIFY notchHeightChanged)
    Q_PROPERTY(
        QString settingsSection READ settingsSection WRITE setSettingsSection NOTIFY settingsSectionChanged)
    Q_PROPERTY(QString hotkeyStatus READ hotkeyStatus WRITE setHotkeyStatus NOTIFY hotkeyStatusChanged)
public:
    static constexpr const char* lastPageKey = "lastPage";

    explicit PanelState(Defaults& defaults, QObject* parent = nullptr);

    Page page() const { return m_page; }
    // Every assignment is stored under "lastPage" and reported by pageAssigned(), because pages
    // differ in panel size even when the page stays the same.
    void setPage(Page page);
    // The stored page, unless it is the tour; an unknown title leaves the page as it is.
    void restorePage();

    bool expanded() const { return m_expanded; }
    void setExpanded(bool expanded);
    bool introActive() const { return m_introActive; }
    void setIntroActive(bool active);
    bool panelPinned() const { return m_panelPinned; }
    void setPanelPinned(bool pinned);
    double notchWidth() const { return m_notchWidth; }
    void setNotchWidth(double width);
    double notchHeight() const { return m_notchHeight; }
    void setNotchHeight(double height);
    const QString& settingsSection() const { return m_settingsSection; }
    void setSettingsSection(const QString& section);
    const QString& hotkeyStatus() const { return m_hotkeyStatus; }
    void setHotkeyStatus(const QString& status);

    // Open file dialogs keep the panel open; never below zero.
    qint64 interactionLocks() const { return m_interactionLocks; }
    void addInteractionLock();
    void releaseInteractionLock();

Q_SIGNALS:
    void pageChanged();
    void pageAssigned();
    void expandedChanged();
    void introActiveChanged();
    void panelPinnedChanged();
    void notchWidthChanged();
    void notchHeightChanged();
    void settingsSectionChanged();
    void hotkeyStatusChanged();
    void interactionLocksChanged();

private:
    template <typename T> void assign(T& field, const T& value, void (PanelState::*notify)())
    {
        if (field == value)
            return;
        field = value;
        Q_EMIT(this->*notify)();
    }

    Defaults& m_defaults;
    Page m_page = Page::home;
    bool m_expanded = false;
    bool m_introActive = false;
    bool m_panelPinned = false;
    double m_notchWidth = 185.0;
    double m_notchHeight = 32.0;
    QString m_settingsSection = QStringLiteral("Ansicht");
    QString m_hotkeyStatus;
    qint64 m_interactionLocks = 0;
};
