#include "shell/widgets/ViewSettings.h"

#include "model/Model.h"
#include "productivity/Productivity.h"
#include "settings/Preferences.h"
#include "shell/SettingsTexts.h"
#include "shell/widgets/LayoutButton.h"
#include "ui/PanelTheme.h"
#include "ui/TextLabel.h"
#include "ui/ToggleRow.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

ViewSettings::ViewSettings(Model& model, QWidget* parent)
    : QWidget(parent), m_model(model),
      m_replay(new QPushButton(PanelTheme::buttonText(SettingsTexts::replayWelcome()))),
      m_caption((new TextLabel(QString(), 11, TextLabel::secondary))->wrapping()),
      m_mini(new ToggleRow(SettingsTexts::miniToggle())),
      m_rememberPage(new ToggleRow(SettingsTexts::rememberPageToggle())),
      m_screenMain(new ToggleRow(SettingsTexts::screenMainToggle(), SettingsTexts::screenMainNote())),
      m_animate(new ToggleRow(SettingsTexts::animateToggle()))
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    m_replay->setCursor(Qt::PointingHandCursor);
    column->addWidget(m_replay, 0, Qt::AlignLeft);
    column->addSpacing(4);
    column->addWidget(new TextLabel(SettingsTexts::formHeader(), 10, TextLabel::caps));

    auto* layouts = new QHBoxLayout;
    layouts->setSpacing(8);
    for (PanelLayout layout : PanelLayouts::all()) {
        auto* button = new LayoutButton(layout);
        m_layouts.append(button);
        layouts->addWidget(button);
        connect(button, &LayoutButton::clicked, this, [this, layout] {
            m_model.preferences().update([layout](PreferenceValues& values) { values.layout = layout; });
        });
    }
    column->addLayout(layouts);
    column->addWidget(m_caption);
    column->addSpacing(4);
    for (ToggleRow* row : {m_mini, m_rememberPage, m_screenMain, m_animate})
        column->addWidget(row);
    column->addStretch(1);

    connect(m_replay, &QPushButton::clicked, this, [this] { Q_EMIT m_model.startWelcome(); });
    connect(m_mini, &ToggleRow::toggled, this, [this](bool on) { m_model.productivity().setMini(on); });
    connect(m_rememberPage, &ToggleRow::toggled, this, [this](bool on) {
        m_model.preferences().update([on](PreferenceValues& values) { values.rememberPage = on; });
    });
    connect(m_screenMain, &ToggleRow::toggled, this, [this](bool on) {
        m_model.preferences().update([on](PreferenceValues& values) { values.screenMain = on; });
    });
    connect(m_animate, &ToggleRow::toggled, this, [this](bool on) {
        m_model.preferences().update([on](PreferenceValues& values) { values.animate = on; });
    });
    connect(&model.preferences(), &Preferences::valuesChanged, this, &ViewSettings::sync);
    connect(&model.productivity(), &Productivity::miniChanged, this, &ViewSettings::sync);
    sync();
}

LayoutButton* ViewSettings::layoutButton(PanelLayout layout) const
{
    for (LayoutButton* button : m_layouts) {
        if (button->layout() == layout)
            return button;
    }
    return nullptr;
}

QString ViewSettings::caption() const
{
    return m_caption->text();
}

void ViewSettings::sync()
{
    const PreferenceValues& values = m_model.preferences().values();
    for (LayoutButton* button : m_layouts)
        button->setChecked(button->layout() == values.layout);
    m_caption->setText(SettingsTexts::layoutCaption(values.layout));
    m_mini->setState(m_model.productivity().mini());
    m_rememberPage->setState(values.rememberPage);
    m_screenMain->setState(values.screenMain);
    m_animate->setState(values.animate);
}
