#pragma once

#include <QWidget>

class PanelState;
class QPushButton;

// The place and its weather at the leading side of the header. Until the weather store exists it
// names what it will show and leads to the weather page.
class WeatherHeader : public QWidget
{
    Q_OBJECT
public:
    explicit WeatherHeader(PanelState& panel, QWidget* parent = nullptr);

    QPushButton* button() const { return m_button; }

private:
    QPushButton* m_button;
};
