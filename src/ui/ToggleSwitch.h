#pragma once

#include <QAbstractButton>

// An on/off switch drawn as a pill; clicking flips it.
class ToggleSwitch : public QAbstractButton
{
    Q_OBJECT
public:
    explicit ToggleSwitch(QWidget* parent = nullptr);
    QSize sizeHint() const override { return {34, 20}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};
