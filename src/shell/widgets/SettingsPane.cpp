#include "shell/widgets/SettingsPane.h"

#include "model/PanelState.h"
#include "shell/SettingsTexts.h"
#include "shell/widgets/PageRegistry.h"
#include "ui/LayoutRefresh.h"
#include "ui/SegmentedControl.h"
#include "ui/TextLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

SettingsPane::SettingsPane(PanelState& panel, const PageRegistry& pages, QWidget* parent)
    : QWidget(parent), m_panel(panel),
      m_switcher(new SegmentedControl(SettingsTexts::sections(), SettingsTexts::switcherName())),
      m_scroll(new QScrollArea), m_quit(new QPushButton(SettingsTexts::quit()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_switcher);

    // One scrolled column holds every section; only the chosen one is visible, so the column is
    // exactly as tall as that section.
    auto* sections = new QWidget;
    auto* stack = new QVBoxLayout(sections);
    stack->setContentsMargins(2, 4, 10, 4);
    stack->setSpacing(0);
    for (const QString& name : SettingsTexts::sections()) {
        auto* section = new QWidget;
        auto* pieces = new QVBoxLayout(section);
        pieces->setContentsMargins(0, 0, 0, 0);
        pieces->setSpacing(8);
        for (QWidget* piece : pages.makeSettings(name))
            pieces->addWidget(piece);
        m_sections.insert(name, section);
        stack->addWidget(section);
    }
    stack->addStretch(1);
    m_scroll->setWidget(sections);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFrameShape(QFrame::NoFrame);
    column->addWidget(m_scroll, 1);

    auto* footer = new QHBoxLayout;
    footer->addWidget(new TextLabel(SettingsTexts::productLine(), 10, TextLabel::caps));
    footer->addStretch(1);
    m_quit->setProperty("kind", QStringLiteral("plain"));
    m_quit->setCursor(Qt::PointingHandCursor);
    footer->addWidget(m_quit);
    column->addLayout(footer);

    connect(m_switcher, &SegmentedControl::chosen, this,
            [this](const QString& section) { m_panel.setSettingsSection(section); });
    connect(&panel, &PanelState::settingsSectionChanged, this, &SettingsPane::showSection);
    connect(m_quit, &QPushButton::clicked, this, [] { QCoreApplication::quit(); });
    showSection();
}

QWidget* SettingsPane::visibleSection() const
{
    for (QWidget* section : m_sections) {
        if (!section->isHidden())
            return section;
    }
    return nullptr;
}

void SettingsPane::showSection()
{
    const QString current = m_panel.settingsSection();
    m_switcher->setCurrent(current);
    // An unknown name falls back to the first section the model starts with.
    const QString shown = m_sections.contains(current) ? current : QStringLiteral("Ansicht");
    for (auto it = m_sections.cbegin(); it != m_sections.cend(); ++it)
        it.value()->setHidden(it.key() != shown);
    LayoutRefresh::refresh(m_scroll->widget());
}
