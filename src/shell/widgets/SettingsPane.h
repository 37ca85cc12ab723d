#pragma once

#include <QMap>
#include <QWidget>

class ControlSettings;
class FocusDataSettings;
class Model;
class QPushButton;
class QScrollArea;
class QVBoxLayout;
class SegmentedControl;
class ViewSettings;

// The settings page: a section switcher over the section's controls, which write through at once.
class SettingsPane : public QWidget
{
    Q_OBJECT
public:
    explicit SettingsPane(Model& model, QWidget* parent = nullptr);

    SegmentedControl* switcher() const { return m_switcher; }
    ViewSettings* viewSettings() const { return m_view; }
    ControlSettings* controlSettings() const { return m_control; }
    FocusDataSettings* focusDataSettings() const { return m_focusData; }
    QPushButton* quitButton() const { return m_quit; }
    // The section's column; sections whose stores come later fill theirs here.
    QVBoxLayout* sectionColumn(const QString& section) const;
    QWidget* visibleSection() const;

private:
    void showSection();

    Model& m_model;
    SegmentedControl* m_switcher;
    QScrollArea* m_scroll;
    QMap<QString, QWidget*> m_sections;
    ViewSettings* m_view;
    ControlSettings* m_control;
    FocusDataSettings* m_focusData;
    QPushButton* m_quit;
};
