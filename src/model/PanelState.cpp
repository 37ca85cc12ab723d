#include "model/PanelState.h"

#include "settings/Defaults.h"

PanelState::PanelState(Defaults& defaults, QObject* parent) : QObject(parent), m_defaults(defaults) {}

void PanelState::setPage(Page page)
{
    m_defaults.setString(QString::fromLatin1(lastPageKey), Pages::title(page));
    if (page != m_page) {
        m_page = page;
        Q_EMIT pageChanged();
    }
    Q_EMIT pageAssigned();
}

void PanelState::restorePage()
{
    const auto title = m_defaults.stringValue(QString::fromLatin1(lastPageKey));
    if (!title)
        return;
    const auto page = Pages::fromTitle(*title);
    if (page && *page != Page::onboarding)
        setPage(*page);
}

void PanelState::setExpanded(bool expanded)
{
    assign(m_expanded, expanded, &PanelState::expandedChanged);
}
void PanelState::setIntroActive(bool active)
{
    assign(m_introActive, active, &PanelState::introActiveChanged);
}
void PanelState::setPanelPinned(bool pinned)
{
    assign(m_panelPinned, pinned, &PanelState::panelPinnedChanged);
}
void PanelState::setNotchWidth(double width)
{
    assign(m_notchWidth, width, &PanelState::notchWidthChanged);
}
void PanelState::setNotchHeight(double height)
{
    assign(m_notchHeight, height, &PanelState::notchHeightChanged);
}
void PanelState::setSettingsSection(const QString& section)
{
    assign(m_settingsSection, section, &PanelState::settingsSectionChanged);
}
void PanelState::setHotkeyStatus(const QString& status)
{
    assign(m_hotkeyStatus, status, &PanelState::hotkeyStatusChanged);
}

void PanelState::addInteractionLock()
{
    ++m_interactionLocks;
    Q_EMIT interactionLocksChanged();
}

void PanelState::releaseInteractionLock()
{
    if (m_interactionLocks == 0)
        return;
    --m_interactionLocks;
    Q_EMIT interactionLocksChanged();
}
