#include "shell/widgets/SettingsPane.h"

#include "focus/widgets/FocusDataSettings.h"
#include "model/Model.h"
#include "shell/SettingsTexts.h"
#include "shell/widgets/ControlSettings.h"
#include "shell/widgets/ViewSettings.h"
#include "ui/LayoutRefresh.h"
#include "ui/SegmentedControl.h"
#include "ui/TextLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

SettingsPane::SettingsPane(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model),
      m_switcher(new SegmentedControl(SettingsTexts::sections(), SettingsTexts::switcherName())),
      m_scroll(new QScrollArea), m_view(new ViewSettings(model)), m_control(new ControlSettings(model)),
      m_focusData(new FocusDataSettings(model)), m_quit(new QPushButton(SettingsTexts::quit()))
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
        QWidget* section = nullptr;
        if (name == QLatin1String("Ansicht"))
            section = m_view;
        else if (name == QLatin1String("Bedienung"))
            section = m_control;
        else if (name == QLatin1String("Fokus & Daten"))
            section = m_focusData;
        else {
            section = new QWidget;
            auto* empty = new QVBoxLayout(section);
            empty->setContentsMargins(0, 0, 0, 0);
            empty->setSpacing(8);
        }
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
            [this](const QString& section) { m_model.setSettingsSection(section); });
    connect(&model, &Model::settingsSectionChanged, this, &SettingsPane::showSection);
    connect(m_quit, &QPushButton::clicked, this, [] { QCoreApplication::quit(); });
    showSection();
}

QVBoxLayout* SettingsPane::sectionColumn(const QString& section) const
{
    QWidget* widget = m_sections.value(section);
    return widget ? qobject_cast<QVBoxLayout*>(widget->layout()) : nullptr;
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
    const QString current = m_model.settingsSection();
    m_switcher->setCurrent(current);
    // An unknown name falls back to the first section the model starts with.
    const QString shown = m_sections.contains(current) ? current : QStringLiteral("Ansicht");
    for (auto it = m_sections.cbegin(); it != m_sections.cend(); ++it)
        it.value()->setHidden(it.key() != shown);
    LayoutRefresh::refresh(m_scroll->widget());
}
