#pragma once

#include <QMap>
#include <QWidget>

class PageRegistry;
class PanelState;
class QPushButton;
class QScrollArea;
class SegmentedControl;

// The settings page: a section switcher over the section's controls, which write through at once.
// Each section stacks the pieces the areas registered for it.
class SettingsPane : public QWidget
{
    Q_OBJECT
public:
    SettingsPane(PanelState& panel, const PageRegistry& pages, QWidget* parent = nullptr);

    SegmentedControl* switcher() const { return m_switcher; }
    QPushButton* quitButton() const { return m_quit; }
    QWidget* section(const QString& name) const { return m_sections.value(name); }
    QWidget* visibleSection() const;

private:
    void showSection();

    PanelState& m_panel;
    SegmentedControl* m_switcher;
    QScrollArea* m_scroll;
    QMap<QString, QWidget*> m_sections;
    QPushButton* m_quit;
};
