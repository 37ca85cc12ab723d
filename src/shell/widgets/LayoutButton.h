#pragma once

#include "settings/PreferenceValues.h"

#include <QAbstractButton>

// One panel layout to choose: its arrangement as a symbol and its name; the chosen one is outlined.
class LayoutButton : public QAbstractButton
{
    Q_OBJECT
public:
    explicit LayoutButton(PanelLayout layout, QWidget* parent = nullptr);

    PanelLayout layout() const { return m_layout; }
    QSize sizeHint() const override { return {120, 58}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    PanelLayout m_layout;
};
