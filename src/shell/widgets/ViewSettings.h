#pragma once

#include "settings/PreferenceValues.h"

#include <QList>
#include <QWidget>

class LayoutButton;
class Model;
class QLabel;
class QPushButton;
class ToggleRow;

// Settings section "Ansicht": the tour, the panel's layout and what it shows where.
class ViewSettings : public QWidget
{
    Q_OBJECT
public:
    explicit ViewSettings(Model& model, QWidget* parent = nullptr);

    QPushButton* replayButton() const { return m_replay; }
    LayoutButton* layoutButton(PanelLayout layout) const;
    QString caption() const;
    ToggleRow* miniRow() const { return m_mini; }
    ToggleRow* rememberPageRow() const { return m_rememberPage; }
    ToggleRow* screenMainRow() const { return m_screenMain; }
    ToggleRow* animateRow() const { return m_animate; }

private:
    void sync();

    Model& m_model;
    QPushButton* m_replay;
    QList<LayoutButton*> m_layouts;
    QLabel* m_caption;
    ToggleRow* m_mini;
    ToggleRow* m_rememberPage;
    ToggleRow* m_screenMain;
    ToggleRow* m_animate;
};
